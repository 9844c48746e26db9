#include "platform/linux/dialogs-qt/ViewWidgets.h"

#include "platform/linux/dialogs-qt/DialogImages.h"
#include "platform/linux/dialogs-qt/LayerWidget.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/TableView.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr double largeControlHeight = 28;

bool isLabel(const ui::View &view) {
    const auto *field = dynamic_cast<const ui::TextField *>(&view);
    return field && !field->editable;
}

bool isLarge(const ui::View &view) {
    if (const auto *field = dynamic_cast<const ui::TextField *>(&view))
        return field->controlSize == ui::ControlSize::large;
    if (const auto *popUp = dynamic_cast<const ui::PopUpButton *>(&view))
        return popUp->controlSize == ui::ControlSize::large;
    const auto *button = dynamic_cast<const ui::Button *>(&view);
    return button && button->controlSize == ui::ControlSize::large;
}

bool isControl(const ui::View &view) {
    return dynamic_cast<const ui::TextField *>(&view) || dynamic_cast<const ui::PopUpButton *>(&view) ||
           dynamic_cast<const ui::Button *>(&view);
}

} // namespace

ViewWidgets::ViewWidgets(std::shared_ptr<ui::View> tree, const ViewContext &viewContext, QWidget *parent)
    : QWidget(parent), root(std::move(tree)), context(viewContext) {
    build(*root);
    place();
}

ViewWidgets::~ViewWidgets() {
    for (ui::View *view : followed)
        view->didChange = nullptr;
}

QWidget *ViewWidgets::widgetOf(const ui::View &view) const {
    const auto found = widgets.find(&view);
    return found == widgets.end() ? nullptr : found->second;
}

bool ViewWidgets::focusFirstInput() {
    const auto first = std::ranges::find_if(inputs, [](const QWidget *input) { return input->isEnabled(); });
    if (first == inputs.end())
        return false;
    (*first)->setFocus();
    return true;
}

void ViewWidgets::nameControl(QWidget &widget, const ui::View &control) {
    if (const auto *search = dynamic_cast<const ui::SearchField *>(&control)) {
        widget.setAccessibleName(toText(search->placeholder));
    } else if (lastLabel) {
        widget.setAccessibleName(lastLabel->text());
        lastLabel->setBuddy(&widget); // pop-ups take no other name
    }
}

void ViewWidgets::build(ui::View &view) {
    // All widgets are siblings, in the order of the tree: so they are painted, and so the keyboard walks
    // them.
    if (QWidget *widget = makeWidget(view))
        widgets.emplace(&view, widget);
    for (const auto &child : view.subviews)
        build(*child);
}

QWidget *ViewWidgets::makeWidget(ui::View &view) {
    if (dynamic_cast<ui::TextField *>(&view))
        return isLabel(view) ? makeLabel(view) : makeField(view);
    if (dynamic_cast<ui::PopUpButton *>(&view))
        return makePopUp(view);
    if (dynamic_cast<ui::Button *>(&view))
        return makeButton(view);
    if (dynamic_cast<ui::ImageView *>(&view))
        return makeImage(view);
    if (dynamic_cast<ui::ScrollView *>(&view))
        return makeScroll(view);
    return view.layer ? new LayerWidget(*view.layer, this) : nullptr;
}

void ViewWidgets::follow(ui::View &view, std::function<void()> show) {
    view.didChange = std::move(show);
    followed.push_back(&view);
}

void ViewWidgets::place() {
    const ui::Size size = root->frameSize.value_or(ui::Size{0, 0});
    setFixedSize(static_cast<int>(std::lround(size.width)), static_cast<int>(std::lround(size.height)));
    frames = layOut(*root, size, measures());
    for (const auto &[view, widget] : widgets) {
        const auto found = frames.find(view); // a scrolled list has its place from its frame
        if (found == frames.end())
            continue;
        const Frame &frame = found->second;
        widget->setGeometry(QRectF(frame.x, frame.y, frame.width, frame.height).toRect());
    }
}

ContentMeasures ViewWidgets::measures() const {
    return {[this](const ui::View &view) { return contentWidth(view); },
            [this](const ui::View &view, double width) { return contentHeight(view, width); }};
}

std::optional<double> ViewWidgets::contentWidth(const ui::View &view) const {
    if (isLabel(view))
        return labelWidth(static_cast<const ui::TextField &>(view));
    if (dynamic_cast<const ui::PopUpButton *>(&view) || dynamic_cast<const ui::Button *>(&view))
        return widgetOf(view)->sizeHint().width();
    return std::nullopt; // a field is as wide as it is made
}

std::optional<ContentHeight> ViewWidgets::contentHeight(const ui::View &view, double width) const {
    if (isLabel(view))
        return labelHeight(static_cast<const ui::TextField &>(view), width);
    if (!isControl(view))
        return std::nullopt;
    const double natural = widgetOf(view)->sizeHint().height();
    const double height = isLarge(view) ? std::max(natural, largeControlHeight) : natural;
    return ContentHeight{height, height};
}

} // namespace fernhop::freedesktop
