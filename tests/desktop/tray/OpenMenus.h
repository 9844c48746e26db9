#pragma once

#include "platform/linux/source/XConnection.h"

#include <algorithm>
#include <string>
#include <vector>

namespace fernhop::desktoptest {

/// A part of the screen, in pixels.
struct ScreenArea {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// The windows of open menus on a display, whoever they belong to.
class OpenMenus {
  public:
    explicit OpenMenus(const std::string &display) : connection(display) {
        for (const char *kind : {"POPUP_MENU", "DROPDOWN_MENU", "MENU"})
            kinds.push_back(connection.atom(std::string("_NET_WM_WINDOW_TYPE_") + kind));
        windowType = connection.atom("_NET_WM_WINDOW_TYPE");
    }

    /// All that show now, those on top last.
    [[nodiscard]] std::vector<ScreenArea> places() const {
        std::vector<ScreenArea> found;
        auto *server = connection.get();
        const freedesktop::XPointer<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(server, xcb_query_tree(server, connection.root()), nullptr));
        for (int index = 0; tree && index < xcb_query_tree_children_length(tree.get()); ++index) {
            const xcb_window_t window = xcb_query_tree_children(tree.get())[index];
            const freedesktop::XPointer<xcb_get_geometry_reply_t> place(
                xcb_get_geometry_reply(server, xcb_get_geometry(server, window), nullptr));
            if (place && isMenu(window) && isSeen(window))
                found.push_back({place->x, place->y, place->width, place->height});
        }
        return found;
    }

    [[nodiscard]] std::size_t count() const { return places().size(); }

  private:
    [[nodiscard]] bool isSeen(xcb_window_t window) const {
        auto *server = connection.get();
        const freedesktop::XPointer<xcb_get_window_attributes_reply_t> state(
            xcb_get_window_attributes_reply(server, xcb_get_window_attributes(server, window), nullptr));
        return state && state->map_state == XCB_MAP_STATE_VIEWABLE;
    }

    [[nodiscard]] bool isMenu(xcb_window_t window) const {
        auto *server = connection.get();
        const auto question = xcb_get_property(server, 0, window, windowType, XCB_ATOM_ATOM, 0, 1);
        const freedesktop::XPointer<xcb_get_property_reply_t> type(
            xcb_get_property_reply(server, question, nullptr));
        if (!type || xcb_get_property_value_length(type.get()) != sizeof(xcb_atom_t))
            return false;
        const auto kind = *static_cast<const xcb_atom_t *>(xcb_get_property_value(type.get()));
        return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
    }

    freedesktop::XConnection connection;
    xcb_atom_t windowType;
    std::vector<xcb_atom_t> kinds;
};

} // namespace fernhop::desktoptest
