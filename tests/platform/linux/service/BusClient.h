#pragma once

#include "platform/linux/base/GPointer.h"
#include "support/MainLoop.h"

#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

using BusConnection = GObjectPointer<GDBusConnection>;
using NodeInfoPointer = std::unique_ptr<GDBusNodeInfo, GDelete<g_dbus_node_info_unref>>;

/// A connection of its own to the bus at an address.
inline BusConnection connectTo(const std::string &address) {
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return BusConnection(
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr));
}

/// A call that another part of this process may answer: the main loop runs while it waits.
class PendingCall {
  public:
    PendingCall(GDBusConnection *bus, const char *name, const char *path, const char *interface,
                const char *method, GVariant *body) {
        g_dbus_connection_call(bus, name, path, interface, method, body, nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                               nullptr, ended, this);
    }
    PendingCall(const PendingCall &) = delete;
    PendingCall &operator=(const PendingCall &) = delete;

    [[nodiscard]] bool isDone() const { return reply || error; }
    [[nodiscard]] bool wait() const {
        return support::runUntil([this] { return isDone(); });
    }

    /// What the bus calls the error; empty when the call went well.
    [[nodiscard]] std::string errorName() const {
        const GCharPointer name(error ? g_dbus_error_get_remote_error(error.get()) : nullptr);
        return name ? name.get() : "";
    }
    [[nodiscard]] std::string result() const {
        const GCharPointer text(reply ? g_variant_print(reply.get(), FALSE) : nullptr);
        return text ? text.get() : "";
    }

  private:
    static void ended(GObject *bus, GAsyncResult *result, gpointer self) {
        auto &call = *static_cast<PendingCall *>(self);
        GError *failure = nullptr;
        call.reply.reset(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &failure));
        call.error.reset(failure);
    }

    GVariantPointer reply;
    GErrorPointer error;
};

} // namespace fernhop::freedesktop
