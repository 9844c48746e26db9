#pragma once

#include "OpenMenus.h"
#include "PanelSession.h"
#include "PanelTraffic.h"
#include "platform/linux/tray/TrayHost.h"

#include <string>
#include <vector>

namespace fernhop::desktoptest {

/// The menu of Fernhop's icon in a panel, worked as a user does who sees it: with clicks and keys.
class TrayMenu {
  public:
    using Titles = std::vector<std::string>;

    /// Fernhop and the panel are running, and the session outlives the object.
    explicit TrayMenu(PanelSession &panelSession);

    /// Walks to an item from submenu to submenu by the keys and presses Return. False when a menu did not
    /// open, or the item cannot be chosen.
    [[nodiscard]] bool choose(const Titles &titles);

    /// Opens the submenu of an item of the first level, and presses what is first in it, with the pointer.
    [[nodiscard]] bool clickFirstIn(const std::string &title);

    /// The titles that can be seen along a path of submenus, disabled ones in round brackets.
    [[nodiscard]] Titles seen(const Titles &path);

  private:
    /// Opens the menu as it is now.
    [[nodiscard]] bool open();
    [[nodiscard]] bool close();
    /// Makes an item the current one of the menu that has the keyboard.
    [[nodiscard]] bool turnTo(const freedesktop::LayoutItem &menu, const std::string &title);
    [[nodiscard]] bool enter(const freedesktop::LayoutItem &menu, const std::string &title,
                             std::size_t openMenus);
    [[nodiscard]] bool showsMenus(std::size_t count);

    PanelSession &session;
    freedesktop::Host host;
    PanelTraffic traffic;
    OpenMenus menus;
};

} // namespace fernhop::desktoptest
