#pragma once

#include "platform/linux/dialogs-qt/DialogHost.h"
#include "platform/ui/Image.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

namespace fernhop::freedesktop {

/// Draws `drawing`, made for a square of `side` points, into `target`, in `ink`.
void paintDrawing(QPainter &painter, const ui::Drawing &drawing, double side, const QRectF &target,
                  const QColor &ink);

/// `image` (null: nothing) as `side` by `side` points for a screen of this pixel ratio. What may be tinted is
/// drawn in `tint`.
[[nodiscard]] QPixmap pixmapOf(const ui::ImageReference &image, double side, double pixelRatio,
                               const QColor &tint, const DialogHost &host);

/// The icon of an `Icon` value of a desktop entry, or the icon theme's for any application.
[[nodiscard]] QIcon iconNamed(const std::string &name);

} // namespace fernhop::freedesktop
