#pragma once

#include "defaulthandler/DefaultHandlerControl.h"
#include "platform/Object.h"
#include "rules/URLRule.h"
#include "settings/Preferences.h"

#include <functional>
#include <string>

namespace fernhop {

/// The actions of menu items and buttons that change rules. A sender without the expected represented object
/// or identifier changes nothing. Choosing a browser turns App Routing on; removing a rule does not change
/// it. Main thread only.
class RuleActions {
  public:
    /// What the actions call besides changing the settings.
    struct Callbacks {
        std::function<void()> rebuildMenu;
        std::function<void(const URLRule &)> editURLRule;                   ///< opens its dialog
        std::function<void(const std::string &sourceBundleID)> editAppRule; ///< opens its dialog
    };

    /// The references must outlive this object.
    RuleActions(Preferences &preferences, DefaultHandlerControl &defaultHandlers, Callbacks callbacks);

    /// The sender is a menu item with a `RuleSelection`.
    void setBrowserForSelectedApp(const Object *sender);
    /// The sender is a menu item with the source application's identifier.
    void clearRule(const Object *sender);
    /// The sender is a menu item with a `URLRuleSelection`; a removed rule stays removed.
    void setBrowserForURLRule(const Object *sender);
    /// The sender is a menu item with the rule's identifier; a removed rule opens no dialog.
    void editURLRule(const Object *sender);
    /// The sender is a menu item with the rule's identifier.
    void clearURLRule(const Object *sender);

    /// The same for buttons, whose `identifier` is the source application's or the rule's.
    void editRuleFromWindow(const Object *sender);
    void clearRuleFromWindow(const Object *sender);
    void editURLRuleFromWindow(const Object *sender);
    void clearURLRuleFromWindow(const Object *sender);

  private:
    void removeAppRule(const std::string &app);
    void removeURLRule(const std::string &id);
    void editExistingURLRule(const std::string &id);

    Preferences &preferences;
    DefaultHandlerControl &defaultHandlers;
    Callbacks callbacks;
};

} // namespace fernhop
