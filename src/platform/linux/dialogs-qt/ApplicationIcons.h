#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <string>

namespace fernhop::freedesktop {

/// Lets icons be found in all places where applications put them, also where the toolkit does not know which
/// icon theme the desktop has. To be called once there is an application object.
void useAllIconPlaces();

/// Paints an icon as large as fits into `area`, in proportion; false when it has no picture.
bool paintIcon(QPainter &painter, const QIcon &icon, const QRectF &area);

/// Paints the icon that a desktop entry names, by its name in the icon theme or its path, else one for any
/// application: the theme's, or our own in `ink`.
void paintApplicationIcon(QPainter &painter, const std::string &icon, const QRectF &area, const QColor &ink);

} // namespace fernhop::freedesktop
