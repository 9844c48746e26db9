#include "platform/linux/tray/NotifierWatcher.h"

#include <string_view>
#include <utility>

namespace fernhop::freedesktop {

namespace {

// A watcher that takes its name before it has put its object on the bus refuses for a moment; one that always
// refuses is to be left alone.
constexpr int tries = 6;
constexpr guint firstPause = 250; // milliseconds; each further one is twice as long

} // namespace

ItemRegistration::ItemRegistration(GDBusConnection *connection)
    : bus(connection), question(g_cancellable_new()),
      watch(g_bus_watch_name_on_connection(bus, notifierWatcher::name, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                           watcherAppeared, watcherVanished, this, nullptr)) {}

ItemRegistration::~ItemRegistration() {
    g_bus_unwatch_name(watch);
    stop();
}

void ItemRegistration::stop() {
    done = false;
    g_cancellable_cancel(question.get());
    if (const guint source = std::exchange(waiting, 0); source != 0)
        g_source_remove(source);
}

void ItemRegistration::call() {
    question.reset(g_cancellable_new());
    // By the connection's own name: that leads every host to the path that the interface prescribes.
    g_dbus_connection_call(bus, notifierWatcher::name, notifierWatcher::path, notifierWatcher::name,
                           "RegisterStatusNotifierItem",
                           g_variant_new("(s)", g_dbus_connection_get_unique_name(bus)), nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, question.get(), answered, this);
}

void ItemRegistration::tryAgain() {
    if (--triesLeft == 0)
        return;
    const guint pause = firstPause << static_cast<unsigned>(tries - 1 - triesLeft);
    waiting = g_timeout_add(pause, waited, this);
}

void ItemRegistration::watcherAppeared(GDBusConnection *, const gchar *, const gchar *, gpointer self) {
    auto &registration = *static_cast<ItemRegistration *>(self);
    registration.stop();
    registration.triesLeft = tries;
    registration.call();
}

void ItemRegistration::watcherVanished(GDBusConnection *, const gchar *, gpointer self) {
    static_cast<ItemRegistration *>(self)->stop();
}

void ItemRegistration::answered(GObject *bus, GAsyncResult *result, gpointer self) {
    GError *error = nullptr;
    const GVariantPointer reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
    const GErrorPointer failure(error);
    // Cancelled, there is perhaps no registration any more.
    if (failure && g_error_matches(failure.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
        return;
    auto &registration = *static_cast<ItemRegistration *>(self);
    registration.done = reply != nullptr;
    if (!registration.done)
        registration.tryAgain();
}

gboolean ItemRegistration::waited(gpointer self) {
    auto &registration = *static_cast<ItemRegistration *>(self);
    registration.waiting = 0;
    registration.call();
    return G_SOURCE_REMOVE;
}

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
