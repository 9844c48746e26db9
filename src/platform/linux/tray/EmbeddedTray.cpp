#include "platform/linux/tray/EmbeddedTray.h"

#include "platform/linux/tray/ImageRenderer.h"

#include <utility>

namespace fernhop::freedesktop {

EmbeddedTray::EmbeddedTray(GDBusConnection *bus, EmbeddedTrayPlace trayPlace, PerformAction performAction)
    : place(std::move(trayPlace)), perform(std::move(performAction)), hosts(bus, [this] { look(); }) {}

EmbeddedTray::~EmbeddedTray() {
    stopWaiting();
}

void EmbeddedTray::setImage(ui::ImageReference newImage, bool withRim) {
    const bool isNew = !ui::sameImage(image, newImage) || hasRim != withRim;
    hasRim = withRim;
    image = std::move(newImage);
    if (icon && isNew)
        drawIcon();
}

void EmbeddedTray::drawIcon() {
    icon->setPicture([drawn = image, rim = hasRim](int side) { return iconPixels(drawn, rim, side); });
}

void EmbeddedTray::setToolTip(const std::string &text) {
    if (text == std::exchange(toolTip, text))
        return;
    if (icon)
        icon->setToolTip(text);
}

void EmbeddedTray::setMenu(std::shared_ptr<const ui::Menu> newMenu) {
    menu = std::move(newMenu);
    if (icon)
        icon->setMenu(menu);
}

void EmbeddedTray::look() {
    if (place.display.empty())
        return;
    if (hosts.areThere().value_or(true)) {
        stopWaiting();
        icon.reset();
        tray.reset();
        return;
    }
    if (!tray)
        tray = std::make_unique<XTray>(place.display, [this] { look(); });
    if (!tray->isThere()) {
        stopWaiting();
        icon.reset();
    } else if (!icon && waiting == 0) {
        // While a session starts the tray of a panel may be there before its StatusNotifier host; what
        // shows an embedded icon is not to be loaded for that moment.
        waiting = g_timeout_add(static_cast<guint>(place.patience.count()), waited, this);
    }
}

void EmbeddedTray::stopWaiting() {
    if (const guint source = std::exchange(waiting, 0); source != 0)
        g_source_remove(source);
}

gboolean EmbeddedTray::waited(gpointer self) {
    auto &tray = *static_cast<EmbeddedTray *>(self);
    tray.waiting = 0;
    tray.show();
    return G_SOURCE_REMOVE;
}

void EmbeddedTray::show() {
    icon = place.makeIcon(perform);
    if (!icon)
        return;
    drawIcon();
    icon->setToolTip(toolTip);
    icon->setMenu(menu);
}

} // namespace fernhop::freedesktop
