#pragma once

#include <QIcon>
#include <QPainter>
#include <QWidget>
#include <functional>
#include <utility>

namespace fernhop::freedesktop {

/// Paints a picture into an area, sharp at whatever density the painter's device has.
using PaintPicture = std::function<void(QPainter &painter, const QRectF &area)>;

/// An icon that is painted anew for each size, density and palette, as a square in the middle of its place.
[[nodiscard]] QIcon paintedIcon(PaintPicture paint);

/// A widget that shows nothing but a picture.
class PictureWidget : public QWidget {
  public:
    PictureWidget(PaintPicture paintsPicture, QWidget *parent)
        : QWidget(parent), picture(std::move(paintsPicture)) {}

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    PaintPicture picture;
};

} // namespace fernhop::freedesktop
