#include "cli/Commands.h"
#include "cli/NameLookup.h"
#include "cli/Results.h"

#include <string>

namespace fernhop::cli {

namespace {

using Kind = command::ShowDialog::Kind;

ui::Selector selectorOf(Kind kind) {
    switch (kind) {
    case Kind::addAppRules:
        return "showAddRuleDialog";
    case Kind::editAppRule:
        return "editRuleFromWindow:";
    case Kind::addURLRule:
        return "showAddURLRuleDialog";
    case Kind::editURLRule:
        return "editURLRuleFromWindow:";
    case Kind::feedback:
        break;
    }
    return "showFeedbackDialog";
}

/// An uninstalled application may still have a rule.
Lookup lookUpSource(const std::string &word, const Context &context) {
    auto installed = lookUpApplication(word, context);
    if (std::holds_alternative<std::string>(installed))
        return installed;
    auto ruled = lookUpRuledApplication(word, context);
    return std::holds_alternative<std::string>(ruled) ? ruled : installed;
}

Lookup lookUpURLRule(const std::string &id, const Context &context) {
    return context.preferences.urlRuleWithID(id) ? Lookup(id) : noSuchURLRule(id);
}

Lookup lookUpSubject(const command::ShowDialog &dialog, const Context &context) {
    if (dialog.kind == Kind::editAppRule)
        return lookUpSource(dialog.subject, context);
    if (dialog.kind == Kind::editURLRule)
        return lookUpURLRule(dialog.subject, context);
    return "";
}

} // namespace

CommandResult carryOut(const command::ShowDialog &dialog, const Call &call) {
    if (!call.context.session.running())
        return failed("Fernhop is not running: only a running Fernhop can show dialogs.");
    const auto subject = lookUpSubject(dialog, call.context);
    if (const auto *failure = std::get_if<CommandResult>(&subject))
        return *failure;
    if (!call.context.controller.openDialog(selectorOf(dialog.kind), std::get<std::string>(subject)))
        return failed("Fernhop is not running: only a running Fernhop can show dialogs.");
    return done("");
}

} // namespace fernhop::cli
