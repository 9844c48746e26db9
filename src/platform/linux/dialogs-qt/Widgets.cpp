#include "platform/linux/dialogs-qt/Widgets.h"

#include "platform/linux/dialogs-qt/DialogPalette.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

namespace fernhop::freedesktop {

void LayerWidget::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double inset = layer.borderWidth / 2;
    const QRectF box = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    const auto fill = [&](const QColor &color) {
        painter.setBrush(color);
        painter.drawRoundedRect(box, layer.cornerRadius, layer.cornerRadius);
    };
    if (background)
        fill(palette().color(*background));
    if (layer.backgroundColor)
        fill(colorIn(palette(), *layer.backgroundColor));
    if (layer.borderColor && layer.borderWidth > 0) {
        painter.setPen(QPen(colorIn(palette(), *layer.borderColor), layer.borderWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(box, layer.cornerRadius, layer.cornerRadius);
    }
}

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

namespace {

constexpr double widestHint = 360; // a line is not read well that is much longer

} // namespace

TextLabel::TextLabel(const QString &text, Look looksLike, QWidget *parent)
    : QLabel(text, parent), look(std::move(looksLike)) {
    setTextFormat(Qt::PlainText);
    setFont(look.font);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize TextLabel::sizeHint() const {
    const int hint = static_cast<int>(std::min(textWidth(text(), look.font), widestHint));
    return {hint, heightForWidth(hint)};
}

QSize TextLabel::minimumSizeHint() const {
    return {0, static_cast<int>(std::ceil(QFontMetricsF(look.font).height()))};
}

int TextLabel::heightForWidth(int width) const {
    constexpr double unlimited = 1e6;
    const TextSpace space{static_cast<double>(width), unlimited, look.maximumLines};
    return static_cast<int>(std::ceil(TextLines(text(), look.font, space).height()));
}

TextLines TextLabel::shownLines() const {
    return {
        text(), look.font, {static_cast<double>(width()), static_cast<double>(height()), look.maximumLines}};
}

bool TextLabel::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    if (shownLines().isCut())
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), toToolTip(text()), this);
    return true;
}

void TextLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setPen(colorIn(palette(), look.color));
    shownLines().draw(painter, {0, 0});
}

} // namespace fernhop::freedesktop
