#include "platform/linux/source/LaunchSignals.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {
namespace {

constexpr std::size_t remembered = 32;
constexpr const char *interfaceName = "org.gtk.gio.DesktopAppInfo";
constexpr const char *signalName = "Launched";
constexpr const char *signalPath = "/org/gtk/gio/DesktopAppInfo";

/// Launchers send the signal within a few milliseconds, also on a busy machine. A link does not wait for one
/// that never does.
constexpr std::chrono::milliseconds longestWait{1000};

std::optional<pid_t> processNumber(gint64 number) {
    const bool isOne = number > 0 && number <= std::numeric_limits<pid_t>::max();
    return isOne ? std::optional(static_cast<pid_t>(number)) : std::nullopt;
}

/// A text that GLib sends as bytes, as file names may be in any encoding.
std::string bytesOf(GVariant *dictionary, const char *key) {
    const GVariantPointer value(g_variant_lookup_value(dictionary, key, G_VARIANT_TYPE_BYTESTRING));
    return value ? g_variant_get_bytestring(value.get()) : std::string();
}

/// Reads the parameters of a signal: (desktop file, display name, child's pid, URIs, more). Any program may
/// send it, with any content; nothing when it names no child.
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

} // namespace

LaunchSignals::LaunchSignals(GDBusConnection *sessionBus)
    : bus(sessionBus ? static_cast<GDBusConnection *>(g_object_ref(sessionBus)) : nullptr) {
    if (bus)
        subscription =
            g_dbus_connection_signal_subscribe(bus.get(), nullptr, interfaceName, signalName, signalPath,
                                               nullptr, G_DBUS_SIGNAL_FLAGS_NONE, received, this, nullptr);
}

LaunchSignals::~LaunchSignals() {
    if (bus)
        g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
}

void LaunchSignals::received(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *,
                             GVariant *parameters, gpointer self) {
    auto &signals = *static_cast<LaunchSignals *>(self);
    auto launch = launchOfSignal(parameters);
    if (!launch)
        return;
    const pid_t child = launch->child;
    signals.latest.push_front(std::move(*launch));
    if (signals.latest.size() > remembered)
        signals.latest.pop_back();
    signals.endWaits([child](const Wait &wait) { return wait.child == child; });
}

std::optional<ApplicationLaunch> LaunchSignals::launchOf(pid_t child) const {
    const auto found = std::ranges::find(latest, child, &ApplicationLaunch::child);
    return found == latest.end() ? std::nullopt : std::optional(*found);
}

void LaunchSignals::await(pid_t child, std::function<void()> ended) {
    waits.emplace_back(child, std::move(ended));
    waits.back().timer.start(longestWait, [this, wait = &waits.back()] {
        endWaits([wait](const Wait &each) { return &each == wait; });
    });
}

/// What is called may begin other waits.
void LaunchSignals::endWaits(const std::function<bool(const Wait &)> &which) {
    std::vector<std::function<void()>> calls;
    for (auto wait = waits.begin(); wait != waits.end();) {
        const auto each = wait++;
        if (!which(*each))
            continue;
        calls.push_back(std::move(each->ended));
        waits.erase(each);
    }
    for (const auto &call : calls)
        call();
}

} // namespace fernhop::freedesktop
