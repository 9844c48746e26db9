#include "platform/linux/dialogs-qt/QtTrayIcon.h"

#include "platform/linux/dialogs-qt/DialogImages.h"
#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/PaintedIcon.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/linux/tray/MenuText.h"

#include <QCursor>
#include <utility>

namespace fernhop::freedesktop {

namespace {

/// What shows in `icon`, all white, moved by a point of an icon of 18 in each direction.
QPixmap rimOf(const QPixmap &shape, double side) {
    QPixmap white = shape;
    QPainter tint(&white);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(white.rect(), Qt::white);
    tint.end();
    QPixmap rim = shape;
    rim.fill(Qt::transparent);
    QPainter painter(&rim);
    for (const int right : {-1, 0, 1})
        for (const int down : {-1, 0, 1})
            painter.drawPixmap(QPointF(right * side / 18, down * side / 18), white);
    return rim;
}

/// The icon with a light rim, as panels that show StatusNotifier items get it.
QIcon rimmed(const QIcon &icon) {
    return paintedIcon([icon](QPainter &painter, const QRectF &area) {
        const auto shape = icon.pixmap(area.size().toSize(), painter.device()->devicePixelRatioF());
        painter.setOpacity(0.75);
        painter.drawPixmap(area.topLeft(), rimOf(shape, area.width()));
        painter.setOpacity(1);
        painter.drawPixmap(area.topLeft(), shape);
    });
}

} // namespace

QtTrayIcon::QtTrayIcon(const DialogHost &host, PerformAction perform)
    : source{std::make_shared<const ui::Menu>(), host, std::move(perform)} {
    QObject::connect(&menu, &QMenu::aboutToShow, [this] { refill(); });
    QObject::connect(&icon, &QSystemTrayIcon::activated, [this](auto reason) { activated(reason); });
    icon.setContextMenu(&menu);
}

void QtTrayIcon::setImage(const ui::ImageReference &image) {
    const QIcon plain = controlIcon(image, source.host);
    // Nobody tells what a tray looks like; where the user asks for nothing, many are dark all the same.
    icon.setIcon(source.host.statedAppearance() ? plain : rimmed(plain));
    icon.show();
}

void QtTrayIcon::setToolTip(const std::string &text) {
    icon.setToolTip(toText(shownText(text)));
}

void QtTrayIcon::refill() {
    adoptAppearance(source.host.statedAppearance());
    menu.clear();
    qDeleteAll(menu.findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly));
    fillMenu(menu, source);
}

void QtTrayIcon::activated(QSystemTrayIcon::ActivationReason reason) {
    // The other button opens the menu by itself.
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick)
        menu.popup(QCursor::pos());
}

} // namespace fernhop::freedesktop
