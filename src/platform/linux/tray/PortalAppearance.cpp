#include "platform/linux/tray/PortalAppearance.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {
namespace {

constexpr const char *portalName = "org.freedesktop.portal.Desktop";
constexpr const char *portalPath = "/org/freedesktop/portal/desktop";
constexpr const char *settingsInterface = "org.freedesktop.portal.Settings";
constexpr const char *appearanceNamespace = "org.freedesktop.appearance";
constexpr const char *colorScheme = "color-scheme";

std::optional<ui::AppearanceName> appearanceOf(GVariant *scheme) {
    constexpr guint32 preferDark = 1, preferLight = 2;
    if (!g_variant_is_of_type(scheme, G_VARIANT_TYPE_UINT32))
        return std::nullopt;
    const guint32 preference = g_variant_get_uint32(scheme);
    if (preference == preferDark)
        return ui::AppearanceName::darkAqua;
    return preference == preferLight ? std::optional(ui::AppearanceName::aqua) : std::nullopt;
}

} // namespace

PortalAppearance::PortalAppearance(GDBusConnection *connection, std::function<void()> whenChanged)
    : bus(connection), changed(std::move(whenChanged)), question(g_cancellable_new()),
      subscription(g_dbus_connection_signal_subscribe(
          bus, portalName, settingsInterface, "SettingChanged", portalPath, appearanceNamespace,
          G_DBUS_SIGNAL_FLAGS_NONE, settingChanged, this, nullptr)),
      watch(g_bus_watch_name_on_connection(bus, portalName, G_BUS_NAME_WATCHER_FLAGS_AUTO_START,
                                           portalAppeared, nullptr, this, nullptr)) {}

PortalAppearance::~PortalAppearance() {
    g_bus_unwatch_name(watch);
    g_cancellable_cancel(question.get());
    g_dbus_connection_signal_unsubscribe(bus, subscription);
}

void PortalAppearance::portalAppeared(GDBusConnection *bus, const gchar *, const gchar *, gpointer self) {
    auto &appearance = *static_cast<PortalAppearance *>(self);
    // Only the answer of the portal that is there now counts.
    g_cancellable_cancel(appearance.question.get());
    appearance.question.reset(g_cancellable_new());
    g_dbus_connection_call(bus, portalName, portalPath, settingsInterface, "Read",
                           g_variant_new("(ss)", appearanceNamespace, colorScheme), G_VARIANT_TYPE("(v)"),
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, appearance.question.get(), answered, self);
}

std::optional<ui::AppearanceName>
PortalAppearance::bestMatchFromAppearancesWithNames(const std::vector<ui::AppearanceName> &names) const {
    const auto own = asked.value_or(ui::AppearanceName::aqua);
    return std::ranges::find(names, own) != names.end() ? std::optional(own) : std::nullopt;
}

void PortalAppearance::take(GVariant *value) {
    GVariantPointer scheme(g_variant_ref(value));
    // Read answers with a value within a value.
    while (g_variant_is_of_type(scheme.get(), G_VARIANT_TYPE_VARIANT))
        scheme.reset(g_variant_get_variant(scheme.get()));
    const auto now = appearanceOf(scheme.get());
    if (now != std::exchange(asked, now))
        changed();
}

void PortalAppearance::answered(GObject *bus, GAsyncResult *result, gpointer self) {
    GError *error = nullptr;
    const GVariantPointer reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
    const GErrorPointer failure(error);
    // Cancelled, there is perhaps no appearance any more; what does not answer says nothing.
    if (!reply)
        return;
    const GVariantPointer value(g_variant_get_child_value(reply.get(), 0));
    static_cast<PortalAppearance *>(self)->take(value.get());
}

void PortalAppearance::settingChanged(GDBusConnection *, const gchar *, const gchar *, const gchar *,
                                      const gchar *, GVariant *body, gpointer self) {
    if (!g_variant_is_of_type(body, G_VARIANT_TYPE("(ssv)")))
        return;
    const char *group = nullptr, *key = nullptr;
    GVariant *value = nullptr;
    g_variant_get(body, "(&s&sv)", &group, &key, &value);
    const GVariantPointer owned(value);
    if (std::string_view(group) == appearanceNamespace && std::string_view(key) == colorScheme)
        static_cast<PortalAppearance *>(self)->take(value);
}

} // namespace fernhop::freedesktop
