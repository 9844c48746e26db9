#pragma once

#include <QPainter>

namespace fernhop::freedesktop {

/// Draws Fernhop's own icon into `square`, as it is installed with the program, for where the icon theme does
/// not have it.
void paintOwnIcon(QPainter &painter, const QRectF &square);

} // namespace fernhop::freedesktop
