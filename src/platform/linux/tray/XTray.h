#pragma once

#include "platform/linux/source/XConnection.h"

#include <functional>
#include <string>

namespace fernhop::freedesktop {

/// Whether a tray of the System Tray Protocol is on the first screen of an X display. Main thread only.
class XTray {
  public:
    /// Connects to the display, ":0" say; `changed` is called when a tray came or went from now on.
    XTray(const std::string &display, std::function<void()> changed);
    XTray(const XTray &) = delete;
    XTray &operator=(const XTray &) = delete;

    [[nodiscard]] bool isThere() const { return owner != XCB_WINDOW_NONE; }

  private:
    void handle(const xcb_generic_event_t &event);
    /// Finds the window of the tray and watches it; whether it is another than before.
    bool look();

    XConnection connection;
    std::function<void()> changed;
    xcb_atom_t selection = XCB_ATOM_NONE;
    xcb_atom_t manager = XCB_ATOM_NONE;
    xcb_window_t owner = XCB_WINDOW_NONE;
};

} // namespace fernhop::freedesktop
