#include "platform/linux/dialogs-qt/DialogColors.h"
#include "platform/linux/dialogs-qt/DialogImages.h"
#include "platform/linux/dialogs-qt/LayerWidget.h"
#include "platform/linux/dialogs-qt/LeftAlignedButton.h"
#include "platform/linux/dialogs-qt/PaintedIcon.h"
#include "platform/linux/dialogs-qt/RowList.h"
#include "platform/linux/dialogs-qt/TextLabel.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/linux/dialogs-qt/ViewWidgets.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/TableView.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <limits>

namespace fernhop::freedesktop {

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
