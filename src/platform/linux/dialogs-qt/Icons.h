#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QWidget>
#include <functional>
#include <string>
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

/// Lets icons be found in all places where applications put them, also where the toolkit does not know which
/// icon theme the desktop has. To be called once there is an application object.
void useAllIconPlaces();

/// Paints an icon as large as fits into `area`, in proportion; false when it has no picture.
bool paintIcon(QPainter &painter, const QIcon &icon, const QRectF &area);

/// Paints the icon that a desktop entry names, by its name in the icon theme or its path, else one for any
/// application: the theme's, or our own in `ink`.
void paintApplicationIcon(QPainter &painter, const std::string &icon, const QRectF &area, const QColor &ink);

} // namespace fernhop::freedesktop
