#include "platform/linux/tray/NotifierWatcher.h"

#include <string_view>

namespace fernhop::freedesktop {

namespace {

constexpr const char *watcherName = "org.kde.StatusNotifierWatcher"; // of its interface, too
constexpr const char *watcherPath = "/StatusNotifierWatcher";

// A watcher that takes its name before it has put its object on the bus refuses for a moment; one that always
// refuses is to be left alone.
constexpr int tries = 6;
constexpr std::chrono::milliseconds firstPause(250); // each further one is twice as long

/// The reply of a call; null when it failed, and nothing when it was cancelled, perhaps by the end of the
/// object that made it.
std::optional<GVariantPointer> replyOf(GObject *bus, GAsyncResult *result) {
    GError *error = nullptr;
    GVariantPointer reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
    const GErrorPointer failure(error);
    if (failure && g_error_matches(failure.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
        return std::nullopt;
    return reply;
}

/// Cancels the former call, so that only the answer to the last one counts.
GCancellable *renew(GObjectPointer<GCancellable> &call) {
    g_cancellable_cancel(call.get());
    call.reset(g_cancellable_new());
    return call.get();
}

} // namespace

NotifierWatcher::NotifierWatcher(GDBusConnection *connection) : bus(connection) {
    const auto signalled = [](auto *, auto *, auto *, auto *, const gchar *signal, auto *, gpointer self) {
        const std::string_view name = signal;
        if (name == "StatusNotifierHostRegistered" || name == "StatusNotifierHostUnregistered")
            static_cast<NotifierWatcher *>(self)->queryHost();
    };
    const auto came = [](auto *, auto *, auto *, gpointer self) {
        static_cast<NotifierWatcher *>(self)->appeared();
    };
    const auto went = [](auto *, auto *, gpointer self) {
        static_cast<NotifierWatcher *>(self)->stop();
        static_cast<NotifierWatcher *>(self)->setHost(false);
    };
    subscription =
        g_dbus_connection_signal_subscribe(bus, watcherName, watcherName, nullptr, watcherPath, nullptr,
                                           G_DBUS_SIGNAL_FLAGS_NONE, signalled, this, nullptr);
    watch = g_bus_watch_name_on_connection(bus, watcherName, G_BUS_NAME_WATCHER_FLAGS_NONE, came, went, this,
                                           nullptr);
}

NotifierWatcher::~NotifierWatcher() {
    g_bus_unwatch_name(watch);
    g_dbus_connection_signal_unsubscribe(bus, subscription);
    stop();
}

void NotifierWatcher::stop() {
    isRegistered = false;
    retry.stop();
    g_cancellable_cancel(registration.get());
    g_cancellable_cancel(query.get());
}

void NotifierWatcher::appeared() {
    stop();
    triesLeft = tries;
    registerItem();
    queryHost();
}

void NotifierWatcher::registerItem() {
    const auto answered = [](GObject *connection, GAsyncResult *result, gpointer self) {
        const auto reply = replyOf(connection, result);
        if (!reply)
            return;
        auto &watcher = *static_cast<NotifierWatcher *>(self);
        watcher.isRegistered = *reply != nullptr;
        if (!watcher.isRegistered && --watcher.triesLeft > 0)
            watcher.retry.start(firstPause * (1 << (tries - 1 - watcher.triesLeft)),
                                [&watcher] { watcher.registerItem(); });
    };
    // By the connection's own name: that leads every host to the path that the interface prescribes.
    g_dbus_connection_call(bus, watcherName, watcherPath, watcherName, "RegisterStatusNotifierItem",
                           g_variant_new("(s)", g_dbus_connection_get_unique_name(bus)), nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, renew(registration), answered, this);
}

void NotifierWatcher::queryHost() {
    const auto answered = [](GObject *connection, GAsyncResult *result, gpointer self) {
        const auto reply = replyOf(connection, result);
        if (!reply)
            return;
        GVariant *value = nullptr;
        if (*reply)
            g_variant_get(reply->get(), "(v)", &value);
        const GVariantPointer told(value);
        // A watcher that cannot tell is one that shows the items itself.
        const bool isBoolean = told && g_variant_is_of_type(told.get(), G_VARIANT_TYPE_BOOLEAN);
        static_cast<NotifierWatcher *>(self)->setHost(!isBoolean || g_variant_get_boolean(told.get()));
    };
    g_dbus_connection_call(bus, watcherName, watcherPath, "org.freedesktop.DBus.Properties", "Get",
                           g_variant_new("(ss)", watcherName, "IsStatusNotifierHostRegistered"),
                           G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, renew(query), answered,
                           this);
}

void NotifierWatcher::setHost(bool isPresent) {
    if (std::exchange(host, isPresent) != isPresent)
        onHostChange();
}

} // namespace fernhop::freedesktop
