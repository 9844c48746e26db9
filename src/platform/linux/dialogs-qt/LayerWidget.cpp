#include "platform/linux/dialogs-qt/LayerWidget.h"

#include "platform/linux/dialogs-qt/DialogColors.h"

#include <QPainter>

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

} // namespace fernhop::freedesktop
