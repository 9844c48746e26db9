#pragma once

#include "platform/linux/dialogs-qt/ViewContext.h"
#include "platform/ui/Image.h"

#include <QIcon>
#include <QPainter>

namespace fernhop::freedesktop {

/// Draws `drawing`, made for a square of `side` points, into `target`, in `ink`.
void paintDrawing(QPainter &painter, const ui::Drawing &drawing, double side, const QRectF &target,
                  const QColor &ink);

/// Paints `image` (null: nothing) into `area`, scaled up or down in proportion. What may be tinted is drawn
/// in `tint`.
void paintImage(QPainter &painter, const ui::ImageReference &image, const QRectF &area, const QColor &tint,
                const ViewContext &context);

/// `image` (null: an icon that is null) for a button or an item; `context` outlives it.
[[nodiscard]] QIcon controlIcon(const ui::ImageReference &image, const ViewContext &context);

} // namespace fernhop::freedesktop
