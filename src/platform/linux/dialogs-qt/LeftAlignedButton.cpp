#include "platform/linux/dialogs-qt/LeftAlignedButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace fernhop::freedesktop {

namespace {

constexpr int inset = 8; ///< of the content, from either end

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
    // Styles put the content into the middle of its place, which is therefore made no wider than it.
    constexpr int besideIcon = 4; // which is the styles' own
    const int icon = option.icon.isNull() ? 0 : option.iconSize.width() + besideIcon;
    const int content = icon + option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    option.rect = {inset, 0, std::min(content, width() - 2 * inset), height()};
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
}

} // namespace fernhop::freedesktop
