#pragma once

#include "PanelSession.h"

#include <sys/types.h>

#include <string>

namespace fernhop::desktoptest {

/// A part of the screen, in pixels.
struct ScreenArea {
    int left = 0, top = 0, width = 0, height = 0;
};

/// Whether the picture in a file, which is of an area of the screen, has dark ink on a light ground, as the
/// status icon has on a light panel.
[[nodiscard]] bool isIcon(const std::string &file, const ScreenArea &area);

/// Whether the status icon shows there. Needs `import` and `convert`.
[[nodiscard]] bool iconShows(PanelSession &session, const ScreenArea &area);

/// Opens the menu with a button of the pointer in the middle of an area and chooses its first item that can
/// be chosen, which turns routing on; tried until that took effect, as nothing tells when a menu is open.
[[nodiscard]] bool routingCanBeTurnedOnAt(PanelSession &session, const ScreenArea &area, int button = 1);

/// Whether a process has the widget toolkit in it.
[[nodiscard]] bool hasToolkit(pid_t process);

/// The first of these programs that this machine lacks, those included that looking at icons takes; empty:
/// none.
[[nodiscard]] std::string missingFor(const std::vector<std::string> &programs);

} // namespace fernhop::desktoptest
