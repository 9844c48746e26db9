#include "platform/linux/tray/NotifierHosts.h"

#include "platform/linux/tray/NotifierWatcher.h"

#include <string_view>
#include <utility>

namespace fernhop::freedesktop {

NotifierHosts::NotifierHosts(GDBusConnection *connection, std::function<void()> whenChanged)
    : bus(connection), changed(std::move(whenChanged)), question(g_cancellable_new()),
      subscription(g_dbus_connection_signal_subscribe(bus, notifierWatcher::name, notifierWatcher::name,
                                                      nullptr, notifierWatcher::path, nullptr,
                                                      G_DBUS_SIGNAL_FLAGS_NONE, hostsChanged, this, nullptr)),
      watch(g_bus_watch_name_on_connection(bus, notifierWatcher::name, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                           watcherAppeared, watcherVanished, this, nullptr)) {}

NotifierHosts::~NotifierHosts() {
    g_bus_unwatch_name(watch);
    g_dbus_connection_signal_unsubscribe(bus, subscription);
    g_cancellable_cancel(question.get());
}

void NotifierHosts::ask() {
    // Only the answer to the last question counts.
    g_cancellable_cancel(question.get());
    question.reset(g_cancellable_new());
    g_dbus_connection_call(
        bus, notifierWatcher::name, notifierWatcher::path, "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", notifierWatcher::name, "IsStatusNotifierHostRegistered"), G_VARIANT_TYPE("(v)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, question.get(), answered, this);
}

void NotifierHosts::take(bool hostIsThere) {
    if (std::exchange(present, hostIsThere) != hostIsThere)
        changed();
}

void NotifierHosts::watcherAppeared(GDBusConnection *, const gchar *, const gchar *, gpointer self) {
    static_cast<NotifierHosts *>(self)->ask();
}

void NotifierHosts::watcherVanished(GDBusConnection *, const gchar *, gpointer self) {
    auto &hosts = *static_cast<NotifierHosts *>(self);
    g_cancellable_cancel(hosts.question.get());
    hosts.take(false);
}

void NotifierHosts::hostsChanged(GDBusConnection *, const gchar *, const gchar *, const gchar *,
                                 const gchar *signal, GVariant *, gpointer self) {
    const std::string_view name = signal;
    if (name == "StatusNotifierHostRegistered" || name == "StatusNotifierHostUnregistered")
        static_cast<NotifierHosts *>(self)->ask();
}

void NotifierHosts::answered(GObject *bus, GAsyncResult *result, gpointer self) {
    GError *error = nullptr;
    const GVariantPointer reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
    const GErrorPointer failure(error);
    if (failure && g_error_matches(failure.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
        return;
    GVariant *value = nullptr;
    if (reply)
        g_variant_get(reply.get(), "(v)", &value);
    const GVariantPointer told(value);
    // A watcher that cannot tell is one that shows the items itself.
    const bool isBoolean = told && g_variant_is_of_type(told.get(), G_VARIANT_TYPE_BOOLEAN);
    static_cast<NotifierHosts *>(self)->take(!isBoolean || g_variant_get_boolean(told.get()));
}

} // namespace fernhop::freedesktop
