#include "platform/linux/dialogs-qt/QtAlerts.h"

#include "platform/linux/dialogs-qt/DialogPalette.h"

#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN";

} // namespace

QtAlerts::QtAlerts(ViewContext viewContext, std::function<void()> shown)
    : context(std::move(viewContext)), onShown(std::move(shown)) {}

bool QtAlerts::bringToFront() {
    if (!open)
        return false;
    open->setWindowState(open->windowState() & ~Qt::WindowMinimized);
    bringForward(*open);
    return true;
}

void QtAlerts::bringForward(AlertDialog &dialog) {
    // The toolkit takes the token from here, and from nowhere else.
    if (!token.empty())
        qputenv(tokenVariable, QByteArray::fromStdString(std::exchange(token, {})));
    dialog.raise();
    dialog.activateWindow();
    onShown();
}

int QtAlerts::runModal(const ui::Alert &alert) {
    adoptAppearance(appearance);
    AlertDialog dialog(alert, context);
    open = &dialog;
    dialog.whenShown([&] { bringForward(dialog); }); // compositors turn down what they do not show yet
    dialog.exec();
    return dialog.response();
}

void QtAlerts::dismiss() {
    if (open)
        open->reject();
}

void QtAlerts::setAppearance(std::optional<ui::AppearanceName> newAppearance) {
    appearance = newAppearance;
    adoptAppearance(appearance);
}

} // namespace fernhop::freedesktop
