#pragma once

#include "OpenMenus.h"
#include "PanelSession.h"

#include <sys/types.h>

#include <string>

namespace fernhop::desktoptest {

/// The first icon in the tray of a panel of 30 pixels at the top of the screen.
inline constexpr ScreenArea firstIcon{0, 0, 30, 30};

/// Whether the picture in a file, which is of an area of the screen, has dark ink on a light ground, as the
/// status icon has on a light panel and a menu by itself.
[[nodiscard]] bool hasInk(const std::string &file, const ScreenArea &area);

/// Whether that shows there now. Needs `import` and `convert`.
[[nodiscard]] bool inkShows(PanelSession &session, const ScreenArea &area);

/// Whether something light shows there now, on a black ground. Needs `import` and `convert`.
[[nodiscard]] bool lightShows(PanelSession &session, const ScreenArea &area);

/// Opens the menu of an icon with a button of the pointer.
[[nodiscard]] bool openMenuAt(PanelSession &session, const OpenMenus &menus, const ScreenArea &area,
                              int button = 1);

/// Chooses the first item of the open menu that can be chosen, which turns routing on.
[[nodiscard]] bool firstItemTurnsRoutingOn(PanelSession &session);

/// Opens the menu and does that.
[[nodiscard]] bool routingCanBeTurnedOnAt(PanelSession &session, const ScreenArea &area, int button = 1);

/// What `fernhop status` says shows the icon; empty: nothing.
[[nodiscard]] std::string toldIconPlace(PanelSession &session);

/// Whether a process has the widget toolkit in it.
[[nodiscard]] bool hasToolkit(pid_t process);

/// The first of these programs that this machine lacks, those included that looking at icons takes; empty:
/// none.
[[nodiscard]] std::string missingFor(const std::vector<std::string> &programs);

} // namespace fernhop::desktoptest
