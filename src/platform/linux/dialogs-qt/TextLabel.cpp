#include "platform/linux/dialogs-qt/TextLabel.h"

#include "platform/linux/dialogs-qt/DialogColors.h"
#include "platform/linux/dialogs-qt/ViewText.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

namespace fernhop::freedesktop {

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
    constexpr double endless = 1e6;
    const TextSpace space{static_cast<double>(width), endless, look.maximumLines};
    return static_cast<int>(std::ceil(TextLines(text(), look.font, space).height()));
}

bool TextLabel::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const TextSpace space{static_cast<double>(width()), static_cast<double>(height()), look.maximumLines};
    if (TextLines(text(), look.font, space).isCut())
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), toToolTip(text()), this);
    return true;
}

void TextLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setPen(colorIn(palette(), look.color));
    const TextSpace space{static_cast<double>(width()), static_cast<double>(height()), look.maximumLines};
    TextLines(text(), look.font, space).draw(painter, {0, 0});
}

} // namespace fernhop::freedesktop
