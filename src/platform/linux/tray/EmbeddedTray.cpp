#include "platform/linux/tray/EmbeddedTray.h"

#include <utility>

namespace fernhop::freedesktop {

EmbeddedTray::EmbeddedTray(GDBusConnection *bus, EmbeddedTrayPlace trayPlace)
    : place(std::move(trayPlace)), hosts(bus, [this] { look(); }) {}

EmbeddedTray::~EmbeddedTray() {
    stopWaiting();
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
        // While a session starts the tray of a panel may be there before its StatusNotifier host; no program
        // is to be started for that moment.
        waiting = g_timeout_add(static_cast<guint>(place.patience.count()), waited, this);
    }
}

void EmbeddedTray::stopWaiting() {
    if (const guint source = std::exchange(waiting, 0); source != 0)
        g_source_remove(source);
}

gboolean EmbeddedTray::waited(gpointer self) {
    auto &own = *static_cast<EmbeddedTray *>(self);
    own.waiting = 0;
    own.icon = own.place.showIcon();
    return G_SOURCE_REMOVE;
}

} // namespace fernhop::freedesktop
