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
    : bus(connection), changed(std::move(whenChanged)), question(g_cancellable_new()) {
    const auto settingChanged = [](auto *, auto *, auto *, auto *, auto *, GVariant *body, gpointer self) {
        const char *group = nullptr, *key = nullptr;
        GVariant *value = nullptr;
        if (!g_variant_is_of_type(body, G_VARIANT_TYPE("(ssv)")))
            return;
        g_variant_get(body, "(&s&sv)", &group, &key, &value);
        const GVariantPointer owned(value);
        if (std::string_view(group) == appearanceNamespace && std::string_view(key) == colorScheme)
            static_cast<PortalAppearance *>(self)->take(value);
    };
    const auto appeared = [](auto *, auto *, auto *, gpointer self) {
        static_cast<PortalAppearance *>(self)->ask();
    };
    subscription = g_dbus_connection_signal_subscribe(
        bus, portalName, settingsInterface, "SettingChanged", portalPath, appearanceNamespace,
        G_DBUS_SIGNAL_FLAGS_NONE, settingChanged, this, nullptr);
    watch = g_bus_watch_name_on_connection(bus, portalName, G_BUS_NAME_WATCHER_FLAGS_AUTO_START, appeared,
                                           nullptr, this, nullptr);
}

PortalAppearance::~PortalAppearance() {
    g_bus_unwatch_name(watch);
    g_cancellable_cancel(question.get());
    g_dbus_connection_signal_unsubscribe(bus, subscription);
}

void PortalAppearance::ask() {
    const auto answered = [](GObject *connection, GAsyncResult *result, gpointer self) {
        const GVariantPointer reply(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
        // Cancelled, there is perhaps no appearance any more; what does not answer says nothing.
        if (!reply)
            return;
        const GVariantPointer value(g_variant_get_child_value(reply.get(), 0));
        static_cast<PortalAppearance *>(self)->take(value.get());
    };
    // Only the answer of the portal that is there now counts.
    g_cancellable_cancel(question.get());
    question.reset(g_cancellable_new());
    g_dbus_connection_call(bus, portalName, portalPath, settingsInterface, "Read",
                           g_variant_new("(ss)", appearanceNamespace, colorScheme), G_VARIANT_TYPE("(v)"),
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, question.get(), answered, this);
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

} // namespace fernhop::freedesktop
