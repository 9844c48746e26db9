#include "platform/linux/dialogs-qt/ViewWidgets.h"

#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/linux/dialogs-qt/RowList.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/linux/dialogs-qt/Widgets.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/TableView.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>
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

namespace {

void showItems(QComboBox &box, const ui::PopUpButton &popUp, const ViewContext &context) {
    const QSignalBlocker quiet(box);
    box.clear();
    for (const ui::MenuItem &item : popUp.items()) {
        box.addItem(controlIcon(item.image, context), toText(item.title));
        if (const int side = item.image ? static_cast<int>(item.image->side) : 0; side > 0)
            box.setIconSize({side, side});
    }
    const auto selected = popUp.selectedIndex();
    box.setCurrentIndex(selected ? static_cast<int>(*selected) : -1);
    box.setEnabled(popUp.enabled);
}

/// A button's text shows its ampersands instead of taking them for marks of shortcuts.
QString buttonText(const std::string &title) {
    return toText(title).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

QWidget *ViewWidgets::makeLabel(ui::View &view) {
    auto &field = static_cast<ui::TextField &>(view);
    auto *label = new TextLabel(toText(field.stringValue()),
                                {toFont(field.font), field.textColor, field.maximumLines}, this);
    lastLabel = label;
    follow(view, [this, &field, label] {
        label->setText(toText(field.stringValue()));
        place();
    });
    return label;
}

QWidget *ViewWidgets::makeField(ui::View &view) {
    auto &field = static_cast<ui::TextField &>(view);
    auto *edit = new QLineEdit(this);
    edit->setPlaceholderText(toText(field.placeholder));
    edit->setMaxLength(std::numeric_limits<int>::max());
    edit->setText(toText(field.stringValue()));
    nameControl(*edit, view);
    const auto *search = dynamic_cast<const ui::SearchField *>(&view);
    const bool firesWhileTyping = search && search->sendsSearchStringImmediately;
    edit->setClearButtonEnabled(search != nullptr);
    connect(edit, &QLineEdit::textEdited, this, [this, &field, firesWhileTyping](const QString &text) {
        field.setStringValue(text.toStdString());
        if (firesWhileTyping)
            context.perform(field.action, field);
    });
    follow(view, [&field, edit] {
        if (const QString text = toText(field.stringValue()); edit->text() != text)
            edit->setText(text);
    });
    inputs.push_back(edit);
    return edit;
}

QWidget *ViewWidgets::makePopUp(ui::View &view) {
    auto &popUp = static_cast<ui::PopUpButton &>(view);
    auto *box = new QComboBox(this);
    nameControl(*box, view);
    showItems(*box, popUp, context);
    connect(box, &QComboBox::activated, this, [this, &popUp](int index) {
        popUp.selectItem(static_cast<std::size_t>(index));
        context.perform(popUp.action, popUp);
    });
    inputs.push_back(box);
    follow(view, [this, &popUp, box] { showItems(*box, popUp, context); });
    return box;
}

QWidget *ViewWidgets::makeButton(ui::View &view) {
    auto &button = static_cast<ui::Button &>(view);
    const QString text = buttonText(button.title);
    auto *push = button.alignment == ui::TextAlignment::left ? new LeftAlignedButton(text, this)
                                                             : new QPushButton(text, this);
    if (button.image) {
        const int side = static_cast<int>(button.image->side);
        push->setIcon(controlIcon(button.image, context));
        push->setIconSize({side, side});
    }
    push->setAccessibleName(toText(button.title));
    connect(push, &QPushButton::clicked, this, [this, &button] { context.perform(button.action, button); });
    return push;
}

QWidget *ViewWidgets::makeImage(ui::View &view) {
    auto &image = static_cast<ui::ImageView &>(view);
    return new PictureWidget(
        [this, &image](QPainter &painter, const QRectF &area) {
            const QColor tint = colorIn(palette(), image.contentTintColor.value_or(ui::Color{}));
            paintImage(painter, image.image, area, tint, context);
        },
        this);
}

QWidget *ViewWidgets::makeScroll(ui::View &view) {
    auto &scroll = static_cast<ui::ScrollView &>(view);
    auto *frame = new LayerWidget(scroll.layer.value_or(ui::Layer{}), this);
    frame->fillWith(QPalette::Base);
    auto *table = dynamic_cast<ui::TableView *>(scroll.documentView.get());
    if (!table)
        return frame;
    auto *list = new RowList(*table, context, frame);
    nameControl(*list, *table);
    list->setFrameShape(scroll.hasBorder ? QFrame::StyledPanel : QFrame::NoFrame);
    list->setVerticalScrollBarPolicy(scroll.hasVerticalScroller ? Qt::ScrollBarAsNeeded
                                                                : Qt::ScrollBarAlwaysOff);
    constexpr int insideTheCorners = 4; // of the radius of 12, so that no row is cut by its curve
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(insideTheCorners, insideTheCorners, insideTheCorners, insideTheCorners);
    layout->addWidget(list);
    follow(*table, [list] { list->update(); });
    widgets.emplace(table, list);
    return frame;
}

} // namespace fernhop::freedesktop
