#pragma once

#include "platform/linux/service/BusClient.h"

#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// An object on a bus that answers every method it declares, and remembers the calls.
class BusApplication {
  public:
    /// `interfaceXml` declares one interface; `name` is its name on the bus.
    BusApplication(const std::string &address, const std::string &name, const std::string &path,
                   const std::string &interfaceXml)
        : bus(connectTo(address)) {
        static constexpr GDBusInterfaceVTable calls = {called, nullptr, nullptr, {}};
        const std::string xml = "<node>" + interfaceXml + "</node>";
        GDBusNodeInfo *node = g_dbus_node_info_new_for_xml(xml.c_str(), nullptr);
        g_dbus_connection_register_object(bus.get(), path.c_str(), node->interfaces[0], &calls, this, nullptr,
                                          nullptr);
        g_dbus_node_info_unref(node);
        const GVariantPointer reply(g_dbus_connection_call_sync(
            bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", name.c_str(), 4U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    }
    ~BusApplication() { g_dbus_connection_close_sync(bus.get(), nullptr, nullptr); }
    BusApplication(const BusApplication &) = delete;
    BusApplication &operator=(const BusApplication &) = delete;

    /// The method and the arguments of each call, as one text.
    std::vector<std::string> received;
    std::string failure; ///< what calls are answered with; empty: success

  private:
    static void called(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *method,
                       GVariant *body, GDBusMethodInvocation *invocation, gpointer self) {
        auto &application = *static_cast<BusApplication *>(self);
        const GCharPointer text(g_variant_print(body, FALSE));
        application.received.push_back(std::string(method) + text.get());
        if (!application.failure.empty())
            g_dbus_method_invocation_return_dbus_error(invocation, "org.example.Error",
                                                       application.failure.c_str());
        else
            g_dbus_method_invocation_return_value(invocation, nullptr);
    }

    BusConnection bus;
};

} // namespace fernhop::freedesktop
