#include "platform/linux/source/LaunchSignals.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <limits>
#include <mutex>
#include <utility>

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

bool isLaunch(GDBusMessage *message) {
    return g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_SIGNAL &&
           g_strcmp0(g_dbus_message_get_interface(message), interfaceName) == 0 &&
           g_strcmp0(g_dbus_message_get_member(message), signalName) == 0 &&
           g_strcmp0(g_dbus_message_get_path(message), signalPath) == 0;
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

/// The latest launches, written on the connection's thread and read on the main one.
class LaunchSignals::Memory {
  public:
    void add(ApplicationLaunch launch) {
        {
            const std::lock_guard lock(mutex);
            latest.push_front(std::move(launch));
            if (latest.size() > remembered)
                latest.pop_back();
        }
        added.notify_all();
    }

    [[nodiscard]] std::optional<ApplicationLaunch> launchOf(pid_t child,
                                                            std::chrono::milliseconds wait) const {
        std::unique_lock lock(mutex);
        std::optional<ApplicationLaunch> launch;
        added.wait_for(lock, wait, [&] {
            const auto found = std::ranges::find(latest, child, &ApplicationLaunch::child);
            if (found != latest.end())
                launch = *found;
            return launch.has_value();
        });
        return launch;
    }

  private:
    mutable std::mutex mutex;
    mutable std::condition_variable added;
    std::deque<ApplicationLaunch> latest; ///< the newest first
};

// The subscription makes the bus send us the signals; the filter sees them as they arrive, even while the
// main thread waits for one.
LaunchSignals::LaunchSignals(GDBusConnection *sessionBus)
    : bus(sessionBus ? static_cast<GDBusConnection *>(g_object_ref(sessionBus)) : nullptr),
      memory(std::make_shared<Memory>()) {
    if (!bus)
        return;
    const GDBusSignalCallback ignore = [](auto *, auto *, auto *, auto *, auto *, auto *, auto) {};
    subscription =
        g_dbus_connection_signal_subscribe(bus.get(), nullptr, interfaceName, signalName, signalPath, nullptr,
                                           G_DBUS_SIGNAL_FLAGS_NONE, ignore, nullptr, nullptr);
    using Shared = std::shared_ptr<Memory>;
    const GDBusMessageFilterFunction remember = [](auto *, GDBusMessage *message, gboolean incoming,
                                                   gpointer shared) {
        if (incoming && isLaunch(message))
            if (auto launch = launchOfSignal(g_dbus_message_get_body(message)))
                (*static_cast<Shared *>(shared))->add(std::move(*launch));
        return message;
    };
    // The filter may still run on its thread after it has been removed, so it shares the memory.
    filter = g_dbus_connection_add_filter(bus.get(), remember, new Shared(memory),
                                          [](gpointer shared) { delete static_cast<Shared *>(shared); });
}

LaunchSignals::~LaunchSignals() {
    if (!bus)
        return;
    g_dbus_connection_remove_filter(bus.get(), filter);
    g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
}

std::optional<ApplicationLaunch> LaunchSignals::launchOf(pid_t child) const {
    return memory->launchOf(child, {});
}

std::optional<ApplicationLaunch> LaunchSignals::awaitLaunchOf(pid_t child) const {
    return bus ? memory->launchOf(child, longestWait) : std::nullopt;
}

} // namespace fernhop::freedesktop
