#include "platform/linux/dialogs-qt/PaintedIcon.h"

#include <QIconEngine>
#include <QPixmap>
#include <algorithm>

namespace fernhop::freedesktop {

namespace {

/// Places for icons need not be square: a high panel gives its tray's icons narrow ones.
QRect squareIn(const QRect &area) {
    const int side = std::min(area.width(), area.height());
    return {area.x() + (area.width() - side) / 2, area.y() + (area.height() - side) / 2, side, side};
}

class Engine : public QIconEngine {
  public:
    explicit Engine(PaintPicture paints) : picture(std::move(paints)) {}

    void paint(QPainter *painter, const QRect &area, QIcon::Mode, QIcon::State) override {
        picture(*painter, squareIn(area));
    }
    [[nodiscard]] QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixels(size);
        pixels.fill(Qt::transparent);
        QPainter painter(&pixels);
        paint(&painter, pixels.rect(), mode, state);
        return pixels;
    }
    [[nodiscard]] QIconEngine *clone() const override { return new Engine(picture); }
    [[nodiscard]] bool isNull() override { return false; }

  private:
    PaintPicture picture;
};

} // namespace

QIcon paintedIcon(PaintPicture paint) {
    return QIcon(new Engine(std::move(paint)));
}

void PictureWidget::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    picture(painter, rect());
}

} // namespace fernhop::freedesktop
