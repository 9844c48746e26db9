#include "platform/linux/dialogs-qt/OwnIcon.h"

#include <QLinearGradient>
#include <QPainterPath>

namespace fernhop::freedesktop {

namespace {

constexpr double drawnSide = 128;

/// Two leaves at a place of the stem, by their angles in degrees.
struct Leaves {
    double x, y, left, right, length;
};

constexpr Leaves pairs[] = {{45.2, 84.3, -123.7, -19.7, 24.0}, {49.6, 73.0, -117.7, -13.7, 21.4},
                            {55.0, 62.4, -111.5, -7.5, 18.8},  {61.6, 52.6, -105.2, -1.2, 16.2},
                            {69.1, 43.6, -98.9, 5.1, 13.6},    {77.8, 35.3, -92.8, 11.2, 11.0}};

QPainterPath leaf(double length) {
    const double near = 0.3 * length, nearHalf = 0.26 * length, far = 0.75 * length, farHalf = 0.22 * length;
    QPainterPath path;
    path.cubicTo(near, -nearHalf, far, -farHalf, length, 0);
    path.cubicTo(far, farHalf, near, nearHalf, 0, 0);
    return path;
}

void paintGround(QPainter &painter) {
    QLinearGradient ground(0, 8, 0, 120);
    ground.setColorAt(0, QColor(0x3f, 0xa6, 0x6b));
    ground.setColorAt(1, QColor(0x1c, 0x6b, 0x4a));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(8, 8, 112, 112), 26, 26);
}

void paintFrond(QPainter &painter) {
    const QColor green(0xf4, 0xfb, 0xf3);
    QPainterPath stem({40, 106});
    stem.quadTo(48, 54, 90, 26);
    painter.strokePath(stem, QPen(green, 5, Qt::SolidLine, Qt::RoundCap));
    for (const Leaves &pair : pairs)
        for (const double angle : {pair.left, pair.right}) {
            painter.save();
            painter.translate(pair.x, pair.y);
            painter.rotate(angle);
            painter.fillPath(leaf(pair.length), green);
            painter.restore();
        }
    painter.setBrush(QColor(0xff, 0xd1, 0x66));
    painter.drawEllipse(QPointF(90, 26), 6, 6);
}

} // namespace

void paintOwnIcon(QPainter &painter, const QRectF &square) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / drawnSide, square.height() / drawnSide);
    paintGround(painter);
    paintFrond(painter);
    painter.restore();
}

} // namespace fernhop::freedesktop
