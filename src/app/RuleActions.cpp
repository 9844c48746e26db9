#include "app/RuleActions.h"

#include "app/SenderText.h"
#include "rules/RuleSelection.h"

#include <optional>
#include <utility>

namespace fernhop {

namespace {

template <typename Selection>
const Selection *representedSelection(const Object *sender) {
    const auto *item = dynamic_cast<const ui::MenuItem *>(sender);
    const auto *object =
        item ? std::get_if<std::shared_ptr<const Object>>(&item->representedObject) : nullptr;
    return object ? dynamic_cast<const Selection *>(object->get()) : nullptr;
}

} // namespace

RuleActions::RuleActions(Preferences &store, DefaultHandlerControl &handlers, Callbacks actionCallbacks)
    : preferences(store), defaultHandlers(handlers), callbacks(std::move(actionCallbacks)) {}

void RuleActions::setBrowserForSelectedApp(const Object *sender) {
    const auto *selection = representedSelection<RuleSelection>(sender);
    if (!selection)
        return;
    preferences.setBrowser(selection->browserBundleID, selection->sourceBundleID);
    defaultHandlers.turnAppRoutingOn();
    callbacks.rebuildMenu();
}

void RuleActions::clearRule(const Object *sender) {
    if (const std::string *app = representedTextOf(sender))
        removeAppRule(*app);
}

void RuleActions::setBrowserForURLRule(const Object *sender) {
    const auto *selection = representedSelection<URLRuleSelection>(sender);
    const auto rule = selection ? preferences.urlRuleWithID(selection->ruleID) : std::nullopt;
    if (!rule)
        return;
    preferences.updateURLRule(rule->id, rule->pattern, selection->browserBundleID);
    defaultHandlers.turnAppRoutingOn();
    callbacks.rebuildMenu();
}

void RuleActions::editURLRule(const Object *sender) {
    if (const std::string *id = representedTextOf(sender))
        editExistingURLRule(*id);
}

void RuleActions::clearURLRule(const Object *sender) {
    if (const std::string *id = representedTextOf(sender))
        removeURLRule(*id);
}

void RuleActions::editRuleFromWindow(const Object *sender) {
    if (const std::string *app = identifierOf(sender))
        callbacks.editAppRule(*app);
}

void RuleActions::clearRuleFromWindow(const Object *sender) {
    if (const std::string *app = identifierOf(sender))
        removeAppRule(*app);
}

void RuleActions::editURLRuleFromWindow(const Object *sender) {
    if (const std::string *id = identifierOf(sender))
        editExistingURLRule(*id);
}

void RuleActions::clearURLRuleFromWindow(const Object *sender) {
    if (const std::string *id = identifierOf(sender))
        removeURLRule(*id);
}

void RuleActions::removeAppRule(const std::string &app) {
    preferences.removeRule(app);
    callbacks.rebuildMenu();
}

void RuleActions::removeURLRule(const std::string &id) {
    preferences.removeURLRule(id);
    callbacks.rebuildMenu();
}

void RuleActions::editExistingURLRule(const std::string &id) {
    if (const auto rule = preferences.urlRuleWithID(id))
        callbacks.editURLRule(*rule);
}

} // namespace fernhop
