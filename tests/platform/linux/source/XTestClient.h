#pragma once

#include "platform/linux/source/XConnection.h"
#include "platform/linux/source/XWindows.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

namespace fernhop::support {

/// A client of an X display that creates the windows of a test.
class XTestClient {
  public:
    explicit XTestClient(const std::string &display) : connection(display) {}

    /// A window that is not shown yet.
    xcb_window_t window() {
        const xcb_window_t id = xcb_generate_id(connection.get());
        xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, id, connection.root(), 0, 0, 200, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        return id;
    }

    /// A shown window with this WM_CLASS.
    xcb_window_t window(std::string_view instance, std::string_view windowClass) {
        const xcb_window_t id = window();
        setClass(id, instance, windowClass);
        show(id);
        return id;
    }

    void setClass(xcb_window_t id, std::string_view instance, std::string_view windowClass) {
        std::string value(instance);
        value.push_back('\0');
        value += windowClass;
        value.push_back('\0');
        setText(id, "WM_CLASS", "STRING", value);
    }

    void setText(xcb_window_t id, const std::string &property, const std::string &type,
                 std::string_view value) {
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, id, connection.atom(property),
                            connection.atom(type), 8, static_cast<std::uint32_t>(value.size()), value.data());
        connection.flush();
    }

    void setNumbers(xcb_window_t id, const std::string &property, const std::string &type,
                    std::initializer_list<std::uint32_t> values) {
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, id, connection.atom(property),
                            connection.atom(type), 32, static_cast<std::uint32_t>(values.size()),
                            values.begin());
        connection.flush();
    }

    void show(xcb_window_t id) {
        xcb_map_window(connection.get(), id);
        connection.flush();
    }

    void destroy(xcb_window_t id) {
        xcb_destroy_window(connection.get(), id);
        connection.flush();
    }

    /// Focuses a window as the user does in a task list.
    void activate(xcb_window_t id) { freedesktop::XWindows(connection).activate(id); }

    /// The active window, from the window manager.
    xcb_window_t active() { return freedesktop::XWindows(connection).active(); }

    /// Whether the window manager manages a window.
    bool isManaged(xcb_window_t id) {
        const auto windows = freedesktop::XWindows(connection).managed();
        return std::find(windows.begin(), windows.end(), id) != windows.end();
    }

    xcb_window_t root() const { return connection.root(); }
    xcb_atom_t atom(const std::string &name) { return connection.atom(name); }

  private:
    freedesktop::XConnection connection;
};

} // namespace fernhop::support
