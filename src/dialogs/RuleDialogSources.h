#pragma once

#include "catalog/AppIcons.h"
#include "defaulthandler/DefaultHandlerControl.h"
#include "platform/Sound.h"
#include "platform/ui/Alert.h"
#include "platform/ui/Images.h"
#include "rules/Browser.h"
#include "rules/InstalledApplication.h"
#include "settings/Preferences.h"

#include <functional>
#include <vector>

namespace fernhop {

/// What the dialogs that change rules use; must outlive them. The lists are read when a dialog opens.
struct RuleDialogSources {
    Preferences &preferences;
    DefaultHandlerControl &defaultHandlers;
    AppIcons &icons;
    const ui::Images &images;
    Sound &sound;
    ui::AlertPresenter &alerts;
    const std::vector<InstalledApplication> &installedApplications;
    const std::vector<Browser> &installedBrowsers;
    std::function<void()> rebuildMenu;

    /// To be called when a rule was saved: turns App Routing on, without which rules have no effect, and
    /// updates the menu.
    void didSaveRule() const {
        defaultHandlers.turnAppRoutingOn();
        rebuildMenu();
    }
};

} // namespace fernhop
