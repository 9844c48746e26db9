#include "platform/linux/dialogs-qt/LeftAlignedButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace fernhop::freedesktop {

namespace {

constexpr int inset = 10; ///< of the content, from either end

void paintContent(QStylePainter &painter, QStyleOptionButton &option) {
    constexpr int besideIcon = 6;
    QRect room = option.rect.adjusted(inset, 0, -inset, 0);
    if (!option.icon.isNull()) {
        option.icon.paint(&painter, {room.topLeft(), QSize(option.iconSize.width(), room.height())});
        room.setLeft(room.left() + option.iconSize.width() + besideIcon);
    }
    // Styles put a text into the middle of its place, which is therefore made no wider than it.
    const int text = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    room.setWidth(std::min(text, room.width()));
    option.rect = room;
    option.icon = {};
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
}

} // namespace

QSize LeftAlignedButton::sizeHint() const {
    return QPushButton::sizeHint() + QSize(2 * inset, 0);
}

void LeftAlignedButton::paintEvent(QPaintEvent *) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
    paintContent(painter, option);
}

} // namespace fernhop::freedesktop
