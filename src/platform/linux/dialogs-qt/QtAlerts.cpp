#include "platform/linux/dialogs-qt/QtAlerts.h"

#include <utility>

namespace fernhop::freedesktop {

QtAlerts::QtAlerts(DialogHost asks, std::string platformPlugin)
    : host(std::move(asks)), words{"fernhop", "-platform", std::move(platformPlugin)} {
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    argumentCount = static_cast<int>(words.size());
    QApplication::setDesktopFileName(QStringLiteral("org.fernhop.Fernhop"));
    application = std::make_unique<QApplication>(argumentCount, arguments.data());
    QApplication::setQuitOnLastWindowClosed(false);
}

bool QtAlerts::bringToFront() {
    if (!open)
        return false;
    open->setWindowState(open->windowState() & ~Qt::WindowMinimized);
    open->raise();
    open->activateWindow();
    return true;
}

int QtAlerts::runModal(const ui::Alert &alert) {
    AlertDialog dialog(alert, host);
    open = &dialog;
    dialog.exec();
    return dialog.response();
}

void QtAlerts::dismiss() {
    if (open)
        open->reject();
}

} // namespace fernhop::freedesktop
