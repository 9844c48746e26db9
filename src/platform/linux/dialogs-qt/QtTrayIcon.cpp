#include "platform/linux/dialogs-qt/QtTrayIcon.h"

#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/PaintedIcon.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/linux/tray/MenuText.h"

#include <QCursor>
#include <QImage>
#include <QtEndian>
#include <cmath>
#include <utility>

namespace fernhop::freedesktop {

QtTrayIcon::QtTrayIcon(const DialogHost &host, PerformAction perform)
    : source{std::make_shared<const ui::Menu>(), host, std::move(perform)} {
    QObject::connect(&menu, &QMenu::aboutToShow, [this] { refill(); });
    QObject::connect(&icon, &QSystemTrayIcon::activated, [this](auto reason) { activated(reason); });
    icon.setContextMenu(&menu);
}

void QtTrayIcon::setPicture(DrawIcon draw) {
    icon.setIcon(paintedIcon([draw = std::move(draw)](QPainter &painter, const QRectF &area) {
        const int side = static_cast<int>(std::lround(area.width() * painter.device()->devicePixelRatioF()));
        const auto pixels = draw(side);
        if (pixels.empty())
            return;
        QImage picture(side, side, QImage::Format_ARGB32);
        qFromBigEndian<quint32>(pixels.data(), static_cast<qsizetype>(side) * side, picture.bits());
        painter.drawImage(area, picture);
    }));
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
