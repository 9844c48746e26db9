#include "dialogs/EditAppRuleDialog.h"

#include "dialogs/BrowserPopup.h"
#include "dialogs/DialogViews.h"
#include "platform/ui/TextField.h"

#include <optional>

namespace fernhop {

using namespace ui;

namespace {

std::shared_ptr<View> makeContainer(const std::string &name, const std::shared_ptr<View> &popup) {
    const auto nameLabel = makeWrappingLabel(name, {13, FontWeight::medium}, ColorRole::label);
    const auto note = makeWrappingLabel("选择这个 App 打开链接时使用的浏览器。", {12, FontWeight::regular},
                                        ColorRole::secondaryLabel, 2);
    return stackedRows({nameLabel, popup, note}, 12, {360, 92}, LayoutRelation::lessThanOrEqual);
}

} // namespace

EditAppRuleDialog::EditAppRuleDialog(const RuleDialogSources &dialogSources) : sources(dialogSources) {}

void EditAppRuleDialog::showEditRuleDialog(const std::string &sourceBundleID) const {
    const auto popup = makePopup(sourceBundleID);
    const std::string name = sources.icons.appName(sourceBundleID);
    Alert alert;
    alert.messageText = "修改浏览器规则";
    alert.informativeText = "为 " + name + " 指定新的默认浏览器。";
    alert.buttons = {"保存", "取消"};
    alert.accessoryView = makeContainer(name, popup);
    if (sources.alerts.runModal(alert) != alertFirstButtonReturn)
        return;
    const auto browser = selectedBrowserID(popup.get());
    if (!browser)
        return;
    sources.preferences.setBrowser(*browser, sourceBundleID);
    sources.didSaveRule();
}

std::shared_ptr<PopUpButton> EditAppRuleDialog::makePopup(const std::string &sourceBundleID) const {
    const AppRules rules = sources.preferences.appRules();
    const auto rule = rules.find(sourceBundleID);
    auto popup = std::make_shared<PopUpButton>();
    popup->controlSize = ControlSize::large;
    popup->translatesAutoresizingMask = false;
    updateBrowserPopup(popup.get(),
                       rule != rules.end() ? std::optional(rule->second)
                                           : sources.defaultHandlers.effectiveDefaultBrowserID(),
                       sources.installedBrowsers, sources.icons);
    return popup;
}

} // namespace fernhop
