#pragma once

#include <glib.h>
#include <xcb/xcb.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// A connection to an X server whose events come through the loop of the thread's default GLib context. When
/// the server goes away no events come any more and requests get no reply. Used on one thread, which a server
/// that does not answer holds up.
class XConnection {
  public:
    /// `display` is a display name such as ":0". Only its first screen is looked at.
    explicit XConnection(const std::string &display);
    ~XConnection();
    XConnection(const XConnection &) = delete;
    XConnection &operator=(const XConnection &) = delete;

    /// Whether the server is connected.
    [[nodiscard]] bool isAlive() const;

    [[nodiscard]] xcb_connection_t *get() const { return connection; }
    [[nodiscard]] xcb_window_t root() const { return rootWindow; }

    /// The atom of a name; 0 when the server is gone.
    [[nodiscard]] xcb_atom_t atom(const std::string &name) const;

    /// Calls `event` for each event from now on, and `lost` once when the server has gone.
    void listen(std::function<void(const xcb_generic_event_t &)> event, std::function<void()> lost);

    /// Sends a client message to the clients that selected one of these events on the root window. Queued.
    void sendToRoot(std::uint32_t eventMask, xcb_client_message_event_t message) const;

    /// Sends the queued requests.
    void flush() const { xcb_flush(connection); }

  private:
    struct Source;

    static gboolean prepare(GSource *source, gint *timeout);
    static gboolean check(GSource *source);
    static gboolean dispatch(GSource *source, GSourceFunc, gpointer);
    bool hasEvent();
    void deliver();

    xcb_connection_t *connection;
    xcb_window_t rootWindow = XCB_WINDOW_NONE;
    Source *source = nullptr;
    xcb_generic_event_t *next = nullptr;
    std::function<void(const xcb_generic_event_t &)> onEvent;
    std::function<void()> onLost;
};

/// A reply or event of the X server, which C gave us to free.
struct XFree {
    void operator()(void *value) const { free(value); }
};
template <typename Type>
using XPointer = std::unique_ptr<Type, XFree>;

} // namespace fernhop::freedesktop
