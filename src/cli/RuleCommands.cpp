#include "cli/Commands.h"
#include "cli/NameLookup.h"
#include "cli/PlainText.h"
#include "cli/Results.h"
#include "platform/Text.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <optional>
#include <string>

namespace fernhop::cli {

namespace {

constexpr std::string_view notStored = "The change could not be stored.";

/// The failure for a pattern that no rule can have; nothing for a valid one.
std::optional<CommandResult> checkPattern(const std::string &pattern) {
    if (!isValidUtf8(pattern))
        return misused("The pattern " + inQuotes(pattern) + " is not valid UTF-8.");
    if (text::trimmed(pattern).empty())
        return misused("The pattern is empty: it would match no URL.");
    return std::nullopt;
}

/// Finishes every command that chooses a browser for a rule: turns App Routing on, as the menu and the
/// dialogs do, since rules have no effect without it.
CommandResult ruleStored(const std::string &description, const Context &context) {
    const bool wasOn = context.defaultHandlers.isRoutingEnabled();
    context.defaultHandlers.turnAppRoutingOn();
    context.controller.rebuildMenu();
    CommandResult result = done(plain(description) + "\n");
    if (!wasOn && context.defaultHandlers.isRoutingEnabled())
        result.output += "App Routing is now on.\n";
    else if (!wasOn) {
        const auto refused = failed("The rule is stored, but the system refused to turn App Routing on.");
        result.status = refused.status;
        result.errors = refused.errors;
    }
    return result;
}

std::string describeRule(const URLRule &rule, const Context &context) {
    return "Rule " + rule.id + ": " + rule.pattern + " -> " +
           describeApplication(rule.browserBundleID, context);
}

} // namespace

CommandResult carryOut(const command::AddURLRule &rule, const Call &call) {
    if (const auto failure = checkPattern(rule.pattern))
        return *failure;
    const auto browser = lookUpBrowser(rule.browser, BrowserKind::anyInstalled, call.context);
    if (const auto *failure = std::get_if<CommandResult>(&browser))
        return *failure;
    const auto &bundleID = std::get<std::string>(browser);
    const auto stored = call.context.preferences.addURLRule(rule.pattern, bundleID);
    if (!stored)
        return failed(notStored);
    return ruleStored(describeRule(*stored, call.context), call.context);
}

CommandResult carryOut(const command::EditURLRule &edit, const Call &call) {
    if (const auto failure = checkPattern(edit.pattern))
        return *failure;
    const auto browser = lookUpBrowser(edit.browser, BrowserKind::anyInstalled, call.context);
    if (const auto *failure = std::get_if<CommandResult>(&browser))
        return *failure;
    if (!call.context.preferences.urlRuleWithID(edit.id))
        return noSuchURLRule(edit.id);
    const URLRule wanted{edit.id, std::string(text::trimmed(edit.pattern)), std::get<std::string>(browser)};
    if (!call.context.preferences.updateURLRule(wanted.id, wanted.pattern, wanted.browserBundleID))
        return failed(notStored);
    return ruleStored(describeRule(wanted, call.context), call.context);
}

CommandResult carryOut(const command::RemoveURLRule &rule, const Call &call) {
    Preferences &preferences = call.context.preferences;
    if (!preferences.urlRuleWithID(rule.id))
        return noSuchURLRule(rule.id);
    const bool isStored = preferences.removeURLRule(rule.id);
    call.context.controller.rebuildMenu();
    return isStored ? done("") : failed(notStored);
}

CommandResult carryOut(const command::SetAppRule &rule, const Call &call) {
    const auto app = lookUpApplication(rule.app, call.context);
    if (const auto *failure = std::get_if<CommandResult>(&app))
        return *failure;
    const auto browser = lookUpBrowser(rule.browser, BrowserKind::anyInstalled, call.context);
    if (const auto *failure = std::get_if<CommandResult>(&browser))
        return *failure;
    const auto &source = std::get<std::string>(app);
    const auto &bundleID = std::get<std::string>(browser);
    if (!call.context.preferences.setBrowser(bundleID, source))
        return failed(notStored);
    return ruleStored("Links from " + describeApplication(source, call.context) + " -> " +
                          describeApplication(bundleID, call.context),
                      call.context);
}

CommandResult carryOut(const command::RemoveAppRule &rule, const Call &call) {
    const auto app = lookUpRuledApplication(rule.app, call.context);
    if (const auto *failure = std::get_if<CommandResult>(&app))
        return *failure;
    const auto &source = std::get<std::string>(app);
    const bool isStored = call.context.preferences.removeRule(source);
    call.context.controller.rebuildMenu();
    return isStored ? done("") : failed(notStored);
}

} // namespace fernhop::cli
