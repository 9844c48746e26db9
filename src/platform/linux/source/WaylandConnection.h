#pragma once

#include <glib.h>
#include <wayland-client.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// A connection to a Wayland compositor whose events come through the loop of the thread's default GLib
/// context. When the compositor goes away no events come any more. Used on one thread, which a compositor
/// that does not answer holds up.
class WaylandConnection {
  public:
    /// `display` is a socket's name or path. Waits until the compositor has listed its interfaces.
    explicit WaylandConnection(const std::string &display);
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection &) = delete;
    WaylandConnection &operator=(const WaylandConnection &) = delete;

    /// An object of an interface that the compositor offers, in the lower of its version and `version`; null
    /// when it offers none. The caller destroys it before the connection.
    [[nodiscard]] void *bind(const wl_interface &interface, std::uint32_t version) const;

    /// Sends the queued requests and waits for the compositor's answers to them.
    void synchronize();

    /// Sends the queued requests.
    void flush() const;

    /// Calls `dispatched` after each batch of events from now on, and `lost` once when the compositor has
    /// gone.
    void listen(std::function<void()> dispatched, std::function<void()> lost);

  private:
    struct Global {
        std::uint32_t name;
        std::uint32_t version;
    };

    wl_display *display;
    wl_registry *registry = nullptr;
    bool alive;
    GSource *source = nullptr;
    std::map<std::string, Global> globals;
    std::function<void()> onDispatched;
    std::function<void()> onLost;
};

/// The listener's function for an event that does not matter.
template <typename... Arguments>
void ignoreEvent(void *, Arguments...) {}

} // namespace fernhop::freedesktop
