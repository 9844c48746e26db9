#pragma once

#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/XConnection.h"

#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// One window, as its properties describe it.
struct XWindow {
    xcb_window_t id = XCB_WINDOW_NONE;
    WindowIdentity identity;
    bool isPartOfDesktop = false; ///< a panel, or the desktop behind the windows
};

/// Reads windows' properties. Any client may write them: those of the wrong type or length are ignored, as
/// are windows that are gone. Main thread only.
class XWindows {
  public:
    /// The connection outlives this object.
    explicit XWindows(const XConnection &server);

    /// The window manager's active window; XCB_WINDOW_NONE when there is none, or no window manager.
    [[nodiscard]] xcb_window_t active() const;

    /// The windows that the window manager manages, those on top last.
    [[nodiscard]] std::vector<xcb_window_t> managed() const;

    /// Describes windows, with two waits for the server however many there are.
    [[nodiscard]] std::vector<XWindow> describe(const std::vector<xcb_window_t> &windows) const;

    /// Asks the window manager to bring a window to the front, as a pager does on the user's behalf.
    void activate(xcb_window_t window) const;

    /// Begins or ends to receive the changes of a window's properties as events.
    void watchProperties(xcb_window_t window, bool watch) const;

    /// The properties whose changes matter: two of the root window, then those of any window.
    [[nodiscard]] xcb_atom_t activeWindowProperty() const { return atoms.activeWindow; }
    [[nodiscard]] xcb_atom_t clientListProperty() const { return atoms.clientList; }
    [[nodiscard]] bool isIdentityProperty(xcb_atom_t property) const;

  private:
    struct Requests;
    struct Atoms {
        xcb_atom_t activeWindow, clientList, clientListStacking, windowType, typeDock, typeDesktop, processID,
            gtkApplicationID, kdeDesktopFile, utf8String;
    };

    [[nodiscard]] static Atoms internAtoms(const XConnection &server);
    [[nodiscard]] xcb_get_property_cookie_t requestProperty(xcb_window_t window, xcb_atom_t property) const;
    [[nodiscard]] XPointer<xcb_get_property_reply_t> reply(xcb_get_property_cookie_t cookie) const;
    [[nodiscard]] std::string text(xcb_get_property_cookie_t cookie) const;
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_get_property_cookie_t cookie, xcb_atom_t type) const;
    [[nodiscard]] Requests request(xcb_window_t window) const;
    [[nodiscard]] XWindow description(const Requests &requests) const;
    [[nodiscard]] std::optional<pid_t> process(const Requests &requests) const;
    [[nodiscard]] std::optional<pid_t> clientProcess(const Requests &requests) const;
    [[nodiscard]] static bool serverHasClientPids(const XConnection &server);

    const XConnection &connection;
    Atoms atoms;
    bool hasClientPids;
};

} // namespace fernhop::freedesktop
