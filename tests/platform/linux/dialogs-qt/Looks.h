#pragma once

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QRectF>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

namespace fernhop::freedesktop {

/// What a widget shows, in the screen's pixels; all of it where no area is given.
inline QImage look(QWidget &widget, const QRect &area = {}) {
    return widget.grab(area.isNull() ? widget.rect() : area).toImage().convertToFormat(QImage::Format_RGB32);
}

/// The smallest box around the pixels of a kind, in points.
inline QRectF boxOf(const QImage &image, const std::function<bool(QColor)> &isWanted) {
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (isWanted(image.pixelColor(x, y)))
                box |= QRect(x, y, 1, 1);
    const double ratio = image.devicePixelRatio();
    return {box.x() / ratio, box.y() / ratio, box.width() / ratio, box.height() / ratio};
}

/// The colour at a place given in points.
inline QColor at(const QImage &image, double x, double y) {
    const double ratio = image.devicePixelRatio();
    return image.pixelColor(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
}

/// By how much two colours differ where they differ most, 0 to 255.
inline int distance(const QColor &one, const QColor &other) {
    return std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                     std::abs(one.blue() - other.blue())});
}

/// `top` at this strength over `ground`.
inline QColor over(const QColor &ground, const QColor &top, double alpha) {
    const auto mixed = [&](int below, int above) {
        return static_cast<int>(std::lround(below + alpha * (above - below)));
    };
    return {mixed(ground.red(), top.red()), mixed(ground.green(), top.green()),
            mixed(ground.blue(), top.blue())};
}

} // namespace fernhop::freedesktop
