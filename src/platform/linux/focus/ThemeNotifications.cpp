#include "platform/linux/focus/ThemeNotifications.h"

namespace fernhop::freedesktop {

ThemeNotifications::ThemeNotifications(GDBusConnection *sessionBus, PostingNotificationCenter &distributed)
    : bus(sessionBus ? static_cast<GDBusConnection *>(g_object_ref(sessionBus)) : nullptr),
      notifications(distributed) {
    if (!bus)
        return;
    const GDBusSignalCallback changed = [](GDBusConnection *, const char *, const char *, const char *,
                                           const char *, GVariant *parameters, gpointer self) {
        static_cast<ThemeNotifications *>(self)->settingChanged(parameters);
    };
    // The bus filters by the first argument, so other settings do not wake us.
    subscription = g_dbus_connection_signal_subscribe(
        bus.get(), "org.freedesktop.portal.Desktop", "org.freedesktop.portal.Settings", "SettingChanged",
        "/org/freedesktop/portal/desktop", "org.freedesktop.appearance", G_DBUS_SIGNAL_FLAGS_NONE, changed,
        this, nullptr);
}

ThemeNotifications::~ThemeNotifications() {
    if (bus)
        g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
}

void ThemeNotifications::settingChanged(GVariant *parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")))
        return;
    const char *key = nullptr;
    GVariant *held = nullptr;
    g_variant_get(parameters, "(&s&sv)", nullptr, &key, &held);
    const GVariantPointer value(held);
    if (g_str_equal(key, "color-scheme") == FALSE ||
        !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT32))
        return;
    const guint32 told = g_variant_get_uint32(value.get());
    if (scheme == told)
        return;
    scheme = told;
    notifications.post({std::string(themeChangedNotification), std::nullopt});
}

} // namespace fernhop::freedesktop
