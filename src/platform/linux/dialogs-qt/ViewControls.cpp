#include "platform/linux/dialogs-qt/DialogColors.h"
#include "platform/linux/dialogs-qt/DialogImages.h"
#include "platform/linux/dialogs-qt/LayerWidget.h"
#include "platform/linux/dialogs-qt/RowList.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/linux/dialogs-qt/ViewWidgets.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/TableView.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace fernhop::freedesktop {

namespace {

void colorLabel(QLabel &label, const ui::Color &color) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, colorIn(label.parentWidget()->palette(), color));
    label.setPalette(palette);
}

void showItems(QComboBox &box, const ui::PopUpButton &popUp, const DialogHost &host) {
    const QSignalBlocker quiet(box);
    box.clear();
    for (const ui::MenuItem &item : popUp.items()) {
        const double side = item.image ? item.image->side : 0;
        box.addItem(QIcon(pixmapOf(item.image, side, box.devicePixelRatioF(),
                                   box.palette().color(QPalette::ButtonText), host)),
                    toText(item.title));
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
    auto *label = new QLabel(toText(field.stringValue()), this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(field.wrapsByWord);
    label->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    label->setFont(toFont(field.font));
    colorLabel(*label, field.textColor);
    follow(view, [this, &field, label] {
        label->setText(toText(field.stringValue()));
        place();
    });
    return label;
}

QWidget *ViewWidgets::makeField(ui::View &view) {
    auto &field = static_cast<ui::TextField &>(view);
    auto *edit = new QLineEdit(toText(field.stringValue()), this);
    edit->setPlaceholderText(toText(field.placeholder));
    edit->setAccessibleName(toText(field.placeholder));
    const auto *search = dynamic_cast<const ui::SearchField *>(&view);
    const bool firesWhileTyping = search && search->sendsSearchStringImmediately;
    edit->setClearButtonEnabled(search != nullptr);
    connect(edit, &QLineEdit::textEdited, this, [this, &field, firesWhileTyping](const QString &text) {
        field.setStringValue(text.toStdString());
        if (firesWhileTyping)
            host.perform(field.action, field);
    });
    follow(view, [&field, edit] {
        if (const QString text = toText(field.stringValue()); edit->text() != text)
            edit->setText(text);
    });
    fields.push_back(&view);
    return edit;
}

QWidget *ViewWidgets::makePopUp(ui::View &view) {
    auto &popUp = static_cast<ui::PopUpButton &>(view);
    auto *box = new QComboBox(this);
    showItems(*box, popUp, host);
    connect(box, &QComboBox::activated, this, [this, &popUp](int index) {
        popUp.selectItem(static_cast<std::size_t>(index));
        host.perform(popUp.action, popUp);
    });
    follow(view, [this, &popUp, box] { showItems(*box, popUp, host); });
    return box;
}

QWidget *ViewWidgets::makeButton(ui::View &view) {
    auto &button = static_cast<ui::Button &>(view);
    auto *push = new QPushButton(buttonText(button.title), this);
    if (button.alignment == ui::TextAlignment::left)
        push->setStyleSheet(QStringLiteral("text-align: left; padding-left: 8px;"));
    if (button.image) {
        const int side = static_cast<int>(button.image->side);
        push->setIcon(QIcon(
            pixmapOf(button.image, side, devicePixelRatioF(), palette().color(QPalette::ButtonText), host)));
        push->setIconSize({side, side});
    }
    push->setAutoDefault(false); // Return closes the dialog, as its own button says
    push->setAccessibleName(toText(button.title));
    connect(push, &QPushButton::clicked, this, [this, &button] { host.perform(button.action, button); });
    return push;
}

QWidget *ViewWidgets::makeImage(ui::View &view) {
    auto &image = static_cast<ui::ImageView &>(view);
    auto *label = new QLabel(this);
    label->setScaledContents(true);
    constexpr double drawnSide = 32; // sharp at every size at which it shows
    label->setPixmap(pixmapOf(image.image, drawnSide, devicePixelRatioF(),
                              colorIn(palette(), image.contentTintColor.value_or(ui::Color{})), host));
    return label;
}

QWidget *ViewWidgets::makeScroll(ui::View &view) {
    auto &scroll = static_cast<ui::ScrollView &>(view);
    auto *frame = new LayerWidget(scroll.layer.value_or(ui::Layer{}), this);
    frame->fillWith(QPalette::Base);
    auto *table = dynamic_cast<ui::TableView *>(scroll.documentView.get());
    if (!table)
        return frame;
    auto *list = new RowList(*table, host, frame);
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
