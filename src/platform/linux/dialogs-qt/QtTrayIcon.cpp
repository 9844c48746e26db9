#include "platform/linux/dialogs-qt/QtTrayIcon.h"

#include "platform/linux/dialogs-qt/DialogImages.h"
#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/linux/tray/MenuText.h"

#include <QCursor>
#include <utility>

namespace fernhop::freedesktop {

QtTrayIcon::QtTrayIcon(const DialogHost &host, PerformAction perform)
    : source{std::make_shared<const ui::Menu>(), host, std::move(perform)} {
    QObject::connect(&menu, &QMenu::aboutToShow, [this] { refill(); });
    QObject::connect(&icon, &QSystemTrayIcon::activated, [this](auto reason) { activated(reason); });
    icon.setContextMenu(&menu);
}

void QtTrayIcon::setImage(const ui::ImageReference &image) {
    icon.setIcon(controlIcon(image, source.host));
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
