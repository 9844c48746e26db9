#include "app/AppDelegate.h"

namespace fernhop {

namespace {

/// An operation without arguments and result.
template <typename Operation>
auto plain(Operation operation) {
    return [operation](const ActionArguments &) -> ActionResult {
        operation();
        return {};
    };
}

/// An operation that takes the sender and has no result.
template <typename Operation>
auto fromSender(Operation operation) {
    return [operation](const ActionArguments &arguments) -> ActionResult {
        operation(arguments.sender);
        return {};
    };
}

} // namespace

ActionTable AppDelegate::makeActionTable() {
    ActionTable table;
    addLifecycleActions(table);
    addDialogActions(table);
    addDefaultHandlerActions(table);
    addRuleActions(table);
    return table;
}

void AppDelegate::addLifecycleActions(ActionTable &table) {
    table["init"] = plain([this] { init(); });
    table["applicationDidFinishLaunching:"] = plain([this] { applicationDidFinishLaunching(); });
    table["applicationShouldHandleReopen:hasVisibleWindows:"] = [this](const ActionArguments &) {
        return applicationShouldHandleReopen();
    };
    table["applicationShouldTerminateAfterLastWindowClosed:"] = [this](const ActionArguments &) {
        return applicationShouldTerminateAfterLastWindowClosed();
    };
    table["applicationShouldTerminate:"] = [this](const ActionArguments &) {
        return applicationShouldTerminate();
    };
    table["systemAppearanceDidChange"] = plain([this] { systemAppearanceDidChange(); });
    table["activeApplicationDidChange:"] = [this](const ActionArguments &arguments) -> ActionResult {
        if (arguments.notification)
            activeApplicationDidChange(*arguments.notification);
        return {};
    };
    table["handleGetURLEvent:withReplyEvent:"] = [this](const ActionArguments &arguments) -> ActionResult {
        if (arguments.event)
            intake.handleGetURLEvent(*arguments.event);
        return {};
    };
    table["refreshApplicationList"] = plain([this] {
        refreshBrowsers();
        rebuildMenu();
    });
    table["quit"] = plain([this] { platform.application.terminate(); });
}

void AppDelegate::addDialogActions(ActionTable &table) {
    table["showAddURLRuleDialog"] = plain([this] { showAddURLRuleDialog(); });
    table["showAddRuleDialog"] = plain([this] { showAddRuleDialog(); });
    table["filterRuleDialogApplications:"] =
        fromSender([this](const Object *sender) { addAppRulesDialog.filterRuleDialogApplications(sender); });
    table["numberOfRowsInTableView:"] = [this](const ActionArguments &) {
        return addAppRulesDialog.numberOfRows();
    };
    table["tableView:viewForTableColumn:row:"] = [this](const ActionArguments &arguments) -> ActionResult {
        return std::shared_ptr<Object>(addAppRulesDialog.viewForRow(arguments.row));
    };
    table["tableViewSelectionDidChange:"] = plain([this] { addAppRulesDialog.selectionDidChange(); });
    table["updateRuleDialogHint"] = plain([this] { addAppRulesDialog.updateRuleDialogHint(); });
    table["showFeedbackDialog"] = plain([this] { showFeedbackDialog(); });
    table["openContactFromButton:"] =
        fromSender([this](const Object *sender) { feedbackDialog.openContactFromButton(sender); });
}

void AppDelegate::addDefaultHandlerActions(ActionTable &table) {
    auto &control = defaultHandlerControl;
    table["enableAppRouting"] = plain([&control] { control.enableAppRouting(); });
    table["switchSystemDefaultBrowser:"] =
        fromSender([&control](const Object *sender) { control.switchSystemDefaultBrowser(sender); });
    table["updateDefaultBrowserFromWindow:"] =
        fromSender([&control](const Object *sender) { control.updateDefaultBrowserFromWindow(sender); });
    table["toggleRestoreDefaultBrowserOnQuit:"] =
        fromSender([&control](const Object *sender) { control.toggleRestoreDefaultBrowserOnQuit(sender); });
}

void AppDelegate::addRuleActions(ActionTable &table) {
    using Action = void (RuleActions::*)(const Object *);
    const auto add = [&](std::string_view selector, Action action) {
        table[selector] = fromSender([this, action](const Object *sender) { (ruleActions.*action)(sender); });
    };
    add("setBrowserForSelectedApp:", &RuleActions::setBrowserForSelectedApp);
    add("clearRule:", &RuleActions::clearRule);
    add("setBrowserForURLRule:", &RuleActions::setBrowserForURLRule);
    add("editURLRule:", &RuleActions::editURLRule);
    add("clearURLRule:", &RuleActions::clearURLRule);
    add("editRuleFromWindow:", &RuleActions::editRuleFromWindow);
    add("editURLRuleFromWindow:", &RuleActions::editURLRuleFromWindow);
    add("clearURLRuleFromWindow:", &RuleActions::clearURLRuleFromWindow);
    add("clearRuleFromWindow:", &RuleActions::clearRuleFromWindow);
}

} // namespace fernhop
