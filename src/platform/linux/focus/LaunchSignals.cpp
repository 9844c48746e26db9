#include "platform/linux/focus/LaunchSignals.h"

#include <algorithm>
#include <limits>

namespace fernhop::freedesktop {

namespace {

constexpr std::size_t remembered = 32;

std::optional<pid_t> processNumber(gint64 number) {
    const bool isOne = number > 0 && number <= std::numeric_limits<pid_t>::max();
    return isOne ? std::optional(static_cast<pid_t>(number)) : std::nullopt;
}

/// A text that GLib sends as bytes, as file names may be in any encoding.
std::string bytesOf(GVariant *dictionary, const char *key) {
    const GVariantPointer value(g_variant_lookup_value(dictionary, key, G_VARIANT_TYPE_BYTESTRING));
    return value ? g_variant_get_bytestring(value.get()) : std::string();
}

} // namespace

std::optional<ApplicationLaunch> launchOfSignal(GVariant *parameters) {
    if (!parameters || !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(aysxasa{sv})")))
        return std::nullopt;
    gint64 child = 0;
    g_variant_get_child(parameters, 2, "x", &child);
    const auto pid = processNumber(child);
    if (!pid)
        return std::nullopt;
    const GVariantPointer more(g_variant_get_child_value(parameters, 4));
    gint64 origin = 0;
    g_variant_lookup(more.get(), "origin-pid", "x", &origin);
    return ApplicationLaunch{*pid, processNumber(origin), bytesOf(more.get(), "origin-prgname"),
                             bytesOf(more.get(), "origin-desktop-file")};
}

LaunchSignals::LaunchSignals(GDBusConnection *sessionBus)
    : bus(sessionBus ? static_cast<GDBusConnection *>(g_object_ref(sessionBus)) : nullptr) {
    if (!bus)
        return;
    const GDBusSignalCallback heard = [](GDBusConnection *, const char *, const char *, const char *,
                                         const char *, GVariant *parameters, gpointer self) {
        static_cast<LaunchSignals *>(self)->remember(parameters);
    };
    subscription = g_dbus_connection_signal_subscribe(bus.get(), nullptr, "org.gtk.gio.DesktopAppInfo",
                                                      "Launched", "/org/gtk/gio/DesktopAppInfo", nullptr,
                                                      G_DBUS_SIGNAL_FLAGS_NONE, heard, this, nullptr);
}

LaunchSignals::~LaunchSignals() {
    if (bus)
        g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
}

std::optional<ApplicationLaunch> LaunchSignals::launchOf(pid_t child) const {
    const auto found = std::find_if(latest.begin(), latest.end(), [child](const ApplicationLaunch &launch) {
        return launch.child == child;
    });
    return found == latest.end() ? std::nullopt : std::optional(*found);
}

void LaunchSignals::remember(GVariant *parameters) {
    if (auto launch = launchOfSignal(parameters))
        latest.push_front(std::move(*launch));
    if (latest.size() > remembered)
        latest.pop_back();
}

} // namespace fernhop::freedesktop
