#pragma once

#include "platform/linux/dialogs-qt/DialogHost.h"

#include <QMenu>

namespace fernhop::freedesktop {

/// What a menu is shown with. Kept by the menu and all that it opens.
struct TrayMenuSource {
    std::shared_ptr<const ui::Menu> menu; ///< not null
    const DialogHost &host;               ///< outlives all that is shown
    PerformAction perform;                ///< called from the main loop, once the menu is closed
};

/// Fills `target`, which is empty, with the items of a menu. Submenus are filled when they open.
void fillMenu(QMenu &target, const TrayMenuSource &source);

} // namespace fernhop::freedesktop
