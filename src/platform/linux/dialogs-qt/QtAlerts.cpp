#include "platform/linux/dialogs-qt/QtAlerts.h"

#include "platform/linux/dialogs-qt/ApplicationIcons.h"
#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/QtTrayIcon.h"

#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN";

} // namespace

QtAlerts::QtAlerts(DialogHost asks, std::string platformPlugin)
    : host(std::move(asks)), words{"fernhop", "-platform", std::move(platformPlugin)} {
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    argumentCount = static_cast<int>(words.size());
    QApplication::setDesktopFileName(QStringLiteral("org.fernhop.Fernhop"));
    application = std::make_unique<QApplication>(argumentCount, arguments.data());
    QApplication::setQuitOnLastWindowClosed(false);
    useAllIconPlaces();
}

bool QtAlerts::bringToFront() {
    if (!open)
        return false;
    open->setWindowState(open->windowState() & ~Qt::WindowMinimized);
    bringForward(*open);
    return true;
}

void QtAlerts::bringForward(AlertDialog &dialog) const {
    // The toolkit takes the token from here, and from nowhere else.
    if (const std::string token = host.takeActivationToken(); !token.empty())
        qputenv(tokenVariable, QByteArray::fromStdString(token));
    dialog.raise();
    dialog.activateWindow();
}

std::unique_ptr<EmbeddedIcon> QtAlerts::makeEmbeddedIcon(PerformAction perform) {
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        return nullptr;
    return std::make_unique<QtTrayIcon>(host, std::move(perform));
}

int QtAlerts::runModal(const ui::Alert &alert) {
    appearanceChanged();
    AlertDialog dialog(alert, host);
    open = &dialog;
    dialog.whenShown([&] { bringForward(dialog); }); // compositors turn down what they do not show yet
    dialog.exec();
    return dialog.response();
}

void QtAlerts::dismiss() {
    if (open)
        open->reject();
}

void QtAlerts::appearanceChanged() {
    adoptAppearance(host.statedAppearance());
}

} // namespace fernhop::freedesktop
