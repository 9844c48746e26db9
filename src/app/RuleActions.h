#pragma once

#include "defaulthandler/DefaultHandlerControl.h"
#include "platform/Object.h"
#include "rules/URLRule.h"
#include "settings/Preferences.h"

#include <functional>
#include <string>

namespace fernhop {

/// The actions by which menu items and buttons change rules. Each reads what its sender carries; a sender
/// that carries something else, or nothing, changes nothing. Choosing a browser turns App Routing on;
/// removing a rule leaves it as it is. Main thread only.
class RuleActions {
  public:
    /// What the actions set off beside their change.
    struct Consequences {
        std::function<void()> rebuildMenu;
        std::function<void(const URLRule &)> editURLRule;                   ///< opens its dialog
        std::function<void(const std::string &sourceBundleID)> editAppRule; ///< opens its dialog
    };

    /// The references must outlive this object.
    RuleActions(Preferences &preferences, DefaultHandlerControl &defaultHandlers, Consequences consequences);

    /// A menu item that carries a `RuleSelection`.
    void setBrowserForSelectedApp(const Object *sender);
    /// A menu item that carries the source application's identifier.
    void clearRule(const Object *sender);
    /// A menu item that carries a `URLRuleSelection`; a rule that is gone is left alone.
    void setBrowserForURLRule(const Object *sender);
    /// A menu item that carries the rule's identifier; a rule that is gone opens no dialog.
    void editURLRule(const Object *sender);
    /// A menu item that carries the rule's identifier.
    void clearURLRule(const Object *sender);

    /// The same by buttons, whose identifier is the source application's or the rule's.
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
    Consequences consequences;
};

} // namespace fernhop
