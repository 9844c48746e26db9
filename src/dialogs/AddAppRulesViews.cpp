#include "dialogs/AddAppRulesDialog.h"
#include "dialogs/BrowserPopup.h"
#include "dialogs/DialogViews.h"

#include <utility>

namespace fernhop {

using namespace ui;

namespace {

std::shared_ptr<TextField> makeHintLabel() {
    return makeWrappingLabel("选择一个或多个 App，然后指定目标浏览器。", {12, FontWeight::regular},
                             ColorRole::secondaryLabel, 2);
}

std::shared_ptr<ScrollView> makeScrollView(std::shared_ptr<TableView> table) {
    auto scroll = std::make_shared<ScrollView>();
    scroll->documentView = std::move(table);
    scroll->hasVerticalScroller = true;
    scroll->hasBorder = false;
    Layer layer;
    layer.cornerRadius = 12;
    layer.borderWidth = 1;
    layer.borderColor = Color{ColorRole::separator, 0.45};
    scroll->layer = layer;
    return scroll;
}

/// The six parts from top to bottom.
struct Parts {
    std::shared_ptr<View> header, search, scroll, label, popup, note;
};

std::vector<Constraint> layOut(const View &container, const Parts &parts) {
    using enum LayoutAttribute;
    constexpr double listHeight = 250;
    std::vector<Constraint> constraints;
    for (const auto &part :
         {parts.header, parts.search, parts.scroll, parts.label, parts.popup, parts.note}) {
        constraints.push_back(aligned(*part, container, leading));
        constraints.push_back(aligned(*part, container, trailing));
    }
    constraints.push_back(aligned(*parts.header, container, top));
    constraints.push_back(pinned(*parts.search, top, *parts.header, bottom, 14));
    constraints.push_back(pinned(*parts.scroll, top, *parts.search, bottom, 10));
    constraints.push_back(fixed(*parts.scroll, height, listHeight));
    constraints.push_back(pinned(*parts.label, top, *parts.scroll, bottom, 14));
    constraints.push_back(pinned(*parts.popup, top, *parts.label, bottom, 6));
    constraints.push_back(pinned(*parts.note, top, *parts.popup, bottom, 12));
    constraints.push_back(atMost(*parts.note, container, bottom));
    return constraints;
}

} // namespace

std::shared_ptr<View> AddAppRulesDialog::makeAccessoryView() {
    const auto search = makeSearchField();
    const auto table = makeTable();
    const auto popup = makePopup();
    const auto hint = makeHintLabel();
    ruleDialogTableView = table;
    ruleDialogSearchField = search;
    ruleDialogBrowserPopup = popup;
    ruleDialogHintLabel = hint;

    const Parts parts{sectionHeader("选择 App", "浏览器 App 已自动排除，可按住 Command 选择多个。",
                                    "app.badge", sources.images),
                      search,
                      makeScrollView(table),
                      makeWrappingLabel("目标浏览器", {12, FontWeight::medium}, ColorRole::secondaryLabel),
                      popup,
                      noteView(hint)};
    auto container = std::make_shared<View>();
    container->frameSize = Size{500, 468};
    container->subviews = {parts.header, parts.search, parts.scroll, parts.label, parts.popup, parts.note};
    for (const auto &part : container->subviews)
        part->translatesAutoresizingMask = false;
    container->constraints = layOut(*container, parts);
    return container;
}

std::shared_ptr<SearchField> AddAppRulesDialog::makeSearchField() const {
    auto field = std::make_shared<SearchField>();
    field->editable = true;
    field->placeholder = "搜索 App 名称或 Bundle ID";
    field->action = "filterRuleDialogApplications:";
    field->sendsSearchStringImmediately = true;
    field->sendsWholeSearchString = false;
    return field;
}

std::shared_ptr<TableView> AddAppRulesDialog::makeTable() {
    auto table = std::make_shared<TableView>();
    table->rowHeight = 40;
    table->allowsMultipleSelection = true;
    table->columnIdentifier = "app";
    table->columnWidth = 468;
    table->action = "updateRuleDialogHint";
    table->numberOfRows = [this] { return numberOfRows(); };
    table->viewForRow = [this](std::ptrdiff_t row) { return viewForRow(row); };
    table->selectionDidChange = [this] { selectionDidChange(); };
    return table;
}

std::shared_ptr<PopUpButton> AddAppRulesDialog::makePopup() const {
    auto popup = std::make_shared<PopUpButton>();
    popup->controlSize = ControlSize::large;
    popup->action = "updateRuleDialogHint";
    updateBrowserPopup(popup.get(), sources.defaultHandlers.effectiveDefaultBrowserID(),
                       sources.installedBrowsers, sources.icons);
    return popup;
}

} // namespace fernhop
