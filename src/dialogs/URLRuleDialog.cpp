#include "dialogs/URLRuleDialog.h"

#include "dialogs/BrowserPopup.h"
#include "dialogs/DialogViews.h"
#include "platform/Text.h"

#include <string>

namespace fernhop {

using namespace ui;

namespace {

std::shared_ptr<TextField> makePatternField(const std::string &pattern) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    field->placeholder = "例如 docs.example、https://wiki.example.org/*";
    field->setStringValue(pattern);
    field->controlSize = ControlSize::large;
    field->translatesAutoresizingMask = false;
    return field;
}

std::shared_ptr<TextField> makeCaption(const std::string &text) {
    return makeWrappingLabel(text, {12, FontWeight::medium}, ColorRole::secondaryLabel);
}

std::shared_ptr<View> makeNote() {
    return noteView(
        makeWrappingLabel("默认按完整 URL 做包含匹配；包含 * 时按通配符匹配。URL 规则优先于 App 规则。",
                          {12, FontWeight::regular}, ColorRole::secondaryLabel, 2));
}

std::shared_ptr<View> makeContainer(const std::shared_ptr<View> &field, const std::shared_ptr<View> &popup) {
    auto container =
        stackedRows({makeCaption("URL 匹配规则"), field, makeCaption("目标浏览器"), popup, makeNote()}, 10,
                    {420, 190}, LayoutRelation::equal);
    for (const auto &wide : {field, popup})
        container->constraints.push_back(aligned(*wide, *container, LayoutAttribute::width));
    return container;
}

} // namespace

URLRuleDialog::URLRuleDialog(const RuleDialogSources &dialogSources) : sources(dialogSources) {}

void URLRuleDialog::showURLRuleDialog(const std::optional<URLRule> &existingRule) const {
    const Views views = makeViews(existingRule);
    Alert alert;
    alert.messageText = existingRule ? "修改 URL 浏览器规则" : "添加 URL 浏览器规则";
    alert.informativeText = "指定匹配某类 URL 时使用的浏览器。";
    alert.buttons = {"保存", "取消"};
    alert.accessoryView = views.container;
    if (sources.alerts.runModal(alert) == alertFirstButtonReturn)
        commit(views, existingRule);
}

URLRuleDialog::Views URLRuleDialog::makeViews(const std::optional<URLRule> &existingRule) const {
    Views views;
    views.pattern = makePatternField(existingRule ? existingRule->pattern : "");
    views.browser = std::make_shared<PopUpButton>();
    views.browser->controlSize = ControlSize::large;
    views.browser->translatesAutoresizingMask = false;
    updateBrowserPopup(views.browser.get(),
                       existingRule ? existingRule->browserBundleID
                                    : sources.defaultHandlers.effectiveDefaultBrowserID(),
                       sources.installedBrowsers, sources.icons);
    views.container = makeContainer(views.pattern, views.browser);
    return views;
}

void URLRuleDialog::commit(const Views &views, const std::optional<URLRule> &existingRule) const {
    const auto browser = selectedBrowserID(views.browser.get());
    if (!browser)
        return;
    const std::string pattern(text::trimmed(views.pattern->stringValue()));
    if (pattern.empty()) {
        sources.sound.beep();
        return;
    }
    if (existingRule)
        sources.preferences.updateURLRule(existingRule->id, pattern, *browser);
    else
        sources.preferences.addURLRule(pattern, *browser);
    sources.didSaveRule();
}

} // namespace fernhop
