#pragma once

#include "platform/Object.h"
#include "platform/ui/Image.h"
#include "platform/ui/Selector.h"

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

/// What the widgets of a dialog need from around them.
struct ViewContext {
    /// Fires a control's action.
    std::function<void(ui::Selector action, const Object &sender)> perform;
    /// The `Icon` of the desktop entry at a path: a name in the icon theme or a file; empty: none.
    std::function<std::string(const std::string &entryPath)> iconOfEntry;
};

/// Paints `image` (null: nothing) into `area`, scaled up or down in proportion. What may be tinted is drawn
/// in `tint`.
void paintImage(QPainter &painter, const ui::ImageReference &image, const QRectF &area, const QColor &tint,
                const ViewContext &context);

/// `image` (null: an icon that is null) for a button or an item; `context` outlives it.
[[nodiscard]] QIcon controlIcon(const ui::ImageReference &image, const ViewContext &context);

} // namespace fernhop::freedesktop
