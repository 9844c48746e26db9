#include "dialogs/AddAppRulesDialog.h"

#include "dialogs/AppRuleRow.h"
#include "dialogs/BrowserPopup.h"
#include "platform/Text.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace fernhop {

using namespace ui;

namespace {

constexpr std::string_view emptyHint = "选择一个或多个 App，然后指定目标浏览器。";

bool contains(const InstalledApplication &application, std::string_view query) {
    return text::localizedCaseInsensitiveContains(application.name, query) ||
           text::localizedCaseInsensitiveContains(application.bundleID, query);
}

/// The first two names and, if there are more, the total.
std::string listOf(const std::vector<const InstalledApplication *> &applications) {
    std::string list = applications.front()->name;
    if (applications.size() > 1)
        list += "、" + applications[1]->name;
    if (applications.size() > 2)
        list += " 等 " + std::to_string(applications.size()) + " 个 App";
    return list;
}

} // namespace

AddAppRulesDialog::AddAppRulesDialog(const RuleDialogSources &dialogSources) : sources(dialogSources) {}

void AddAppRulesDialog::showAddRuleDialog() {
    ruleDialogAllApplications = nonBrowserApplications();
    ruleDialogApplications = ruleDialogAllApplications;
    ruleDialogSelectedBundleIDs.clear();

    Alert alert;
    alert.messageText = "添加 App 浏览器规则";
    alert.informativeText = "选择一个或多个 App，然后为它们指定打开链接时使用的浏览器。";
    alert.buttons = {"添加", "取消"};
    alert.accessoryView = makeAccessoryView();
    updateRuleDialogHint();
    if (sources.alerts.runModal(alert) == alertFirstButtonReturn)
        commit();
}

std::vector<InstalledApplication> AddAppRulesDialog::nonBrowserApplications() const {
    std::unordered_set<std::string_view> browsers;
    for (const Browser &browser : sources.installedBrowsers)
        browsers.insert(browser.bundleID);
    std::vector<InstalledApplication> others;
    std::ranges::copy_if(sources.installedApplications, std::back_inserter(others),
                         [&](const auto &application) { return !browsers.contains(application.bundleID); });
    return others;
}

void AddAppRulesDialog::filterRuleDialogApplications(const Object *sender) {
    const auto *field = dynamic_cast<const TextField *>(sender);
    if (!field)
        return;
    syncRuleDialogSelectionFromVisibleRows();
    const std::string query(text::trimmed(field->stringValue()));
    ruleDialogApplications.clear();
    std::ranges::copy_if(
        ruleDialogAllApplications, std::back_inserter(ruleDialogApplications),
        [&](const auto &application) { return query.empty() || contains(application, query); });
    if (const auto table = ruleDialogTableView.lock())
        table->reloadData();
    restoreRuleDialogSelection();
    updateRuleDialogHint();
}

void AddAppRulesDialog::updateRuleDialogHint() const {
    if (const auto label = ruleDialogHintLabel.lock())
        label->setStringValue(hintText());
}

std::string AddAppRulesDialog::hintText() const {
    const auto chosen = chosenApplications();
    if (chosen.empty())
        return std::string(emptyHint);
    const auto popup = ruleDialogBrowserPopup.lock();
    const MenuItem *browser = popup ? popup->selectedItem() : nullptr;
    return "将已选择的 " + listOf(chosen) + " 浏览器改成：" + (browser ? browser->title : "目标浏览器");
}

std::shared_ptr<View> AddAppRulesDialog::viewForRow(std::ptrdiff_t row) const {
    if (row < 0 || row >= std::ssize(ruleDialogApplications))
        return nullptr;
    return makeAppRuleRow(ruleDialogApplications[static_cast<std::size_t>(row)], sources.icons);
}

void AddAppRulesDialog::selectionDidChange() {
    syncRuleDialogSelectionFromVisibleRows();
    updateRuleDialogHint();
}

void AddAppRulesDialog::syncRuleDialogSelectionFromVisibleRows() {
    const auto table = ruleDialogTableView.lock();
    if (isUpdatingRuleDialogSelection || !table)
        return;
    for (const InstalledApplication &visible : ruleDialogApplications)
        ruleDialogSelectedBundleIDs.erase(visible.bundleID);
    for (const std::size_t row : table->selectedRowIndexes())
        if (row < ruleDialogApplications.size())
            ruleDialogSelectedBundleIDs.insert(ruleDialogApplications[row].bundleID);
}

void AddAppRulesDialog::restoreRuleDialogSelection() {
    const auto table = ruleDialogTableView.lock();
    if (!table)
        return;
    isUpdatingRuleDialogSelection = true;
    table->deselectAll();
    for (std::size_t row = 0; row < ruleDialogApplications.size(); ++row)
        if (ruleDialogSelectedBundleIDs.contains(ruleDialogApplications[row].bundleID))
            table->selectRowIndexes({row}, true);
    isUpdatingRuleDialogSelection = false;
}

std::vector<const InstalledApplication *> AddAppRulesDialog::chosenApplications() const {
    std::vector<const InstalledApplication *> chosen;
    for (const InstalledApplication &application : ruleDialogAllApplications)
        if (ruleDialogSelectedBundleIDs.contains(application.bundleID))
            chosen.push_back(&application);
    return chosen;
}

void AddAppRulesDialog::commit() {
    const auto popup = ruleDialogBrowserPopup.lock();
    const auto browser = selectedBrowserID(popup.get());
    if (!browser)
        return;
    syncRuleDialogSelectionFromVisibleRows();
    const auto chosen = chosenApplications();
    if (chosen.empty()) {
        sources.sound.beep();
        return;
    }
    for (const InstalledApplication *application : chosen)
        sources.preferences.setBrowser(*browser, application->bundleID);
    sources.didSaveRule();
}

} // namespace fernhop
