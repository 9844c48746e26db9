#include "platform/linux/base/Bus.h"

#include <sys/stat.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

namespace fernhop::freedesktop {
namespace {

// A bus answers within milliseconds; one that hangs must not keep a command or a link waiting.
constexpr std::chrono::seconds longestGreeting{5};

/// Cancels what has not ended within the time that a bus is given. GIO has no limit of its own for it.
class TimeLimit {
  public:
    [[nodiscard]] GCancellable *cancellable() const { return cancellation.get(); }

  private:
    const GObjectPointer<GCancellable> cancellation{g_cancellable_new()};
    const std::jthread watch{[cancel = cancellation.get()](const std::stop_token &ended) {
        std::mutex mutex;
        std::condition_variable_any unused;
        std::unique_lock lock(mutex);
        unused.wait_for(lock, ended, longestGreeting, [] { return false; });
        if (!ended.stop_requested())
            g_cancellable_cancel(cancel);
    }};
};

} // namespace

bool hasSessionBus(const Environment &environment) {
    if (const auto address = environment.value("DBUS_SESSION_BUS_ADDRESS"))
        return !address->empty();
    const auto folder = environment.value("XDG_RUNTIME_DIR").value_or("");
    struct stat status = {};
    return folder.starts_with('/') && stat((folder + "/bus").c_str(), &status) == 0 &&
           S_ISSOCK(status.st_mode);
}

Result<GObjectPointer<GDBusConnection>> connectToSessionBus(const Environment &environment) {
    if (!hasSessionBus(environment))
        return Failure{"this session has no message bus (DBUS_SESSION_BUS_ADDRESS is not set)"};
    GError *error = nullptr;
    const TimeLimit limit;
    GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, limit.cancellable(), &error));
    if (!bus) {
        const GErrorPointer failure(error);
        return Failure{std::string("the session's message bus cannot be reached: ") + failure->message};
    }
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

BusObject::BusObject(GDBusConnection *connection, const char *path, const GDBusInterfaceInfo &description,
                     Behaviour objectBehaviour)
    : bus(connection), objectPath(path), interface(description), behaviour(std::move(objectBehaviour)) {
    static constexpr GDBusInterfaceVTable calls = {
        [](auto *, auto *, auto *, auto *, const gchar *method, GVariant *body,
           GDBusMethodInvocation *invocation,
           gpointer self) { static_cast<BusObject *>(self)->behaviour.call(method, body, invocation); },
        [](auto *, auto *, auto *, auto *, const gchar *property, GError **error, gpointer self) {
            GVariant *const value = static_cast<BusObject *>(self)->behaviour.property(property);
            // GDBus asks for one or the other.
            if (value == nullptr)
                g_set_error(error, G_DBUS_ERROR, G_DBUS_ERROR_FAILED, "%s has no value", property);
            return value;
        },
        nullptr,
        {}};
    registration = g_dbus_connection_register_object(bus, path, const_cast<GDBusInterfaceInfo *>(&interface),
                                                     &calls, this, nullptr, nullptr);
}

BusObject::~BusObject() {
    if (registration != 0)
        g_dbus_connection_unregister_object(bus, registration);
}

void BusObject::emit(const char *signal, GVariant *body) const {
    g_dbus_connection_emit_signal(bus, nullptr, objectPath.c_str(), interface.name, signal, body, nullptr);
}

std::vector<std::string> textsIn(GVariant *body, gsize place) {
    const GVariantPointer list(g_variant_get_child_value(body, place));
    std::vector<std::string> texts;
    for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
        const GVariantPointer text(g_variant_get_child_value(list.get(), index));
        texts.emplace_back(g_variant_get_string(text.get(), nullptr));
    }
    return texts;
}

void refuse(GDBusMethodInvocation *invocation, const char *reason) {
    g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS,
                                                  reason);
}

} // namespace fernhop::freedesktop
