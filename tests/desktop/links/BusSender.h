#pragma once

#include "platform/linux/base/GPointer.h"
#include "support/MainLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fernhop::desktoptest {

/// An application that opens links over the bus by itself, without waiting for answers.
class BusSender {
  public:
    explicit BusSender(const std::string &address) : bus(connect(address)) {}

    /// Opens links in one call to Fernhop; `data` is its platform data, null for none.
    void open(const std::vector<std::string> &links, GVariant *data = nullptr) {
        GVariantBuilder list;
        g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
        for (const auto &link : links)
            g_variant_builder_add(&list, "s", link.c_str());
        g_dbus_connection_call(
            bus.get(), "org.fernhop.Fernhop", "/org/fernhop/Fernhop", "org.freedesktop.Application", "Open",
            g_variant_new("(as@a{sv})", &list,
                          data ? data : g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)),
            nullptr, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr, ended, this);
    }

    [[nodiscard]] GDBusConnection *connection() const { return bus.get(); }

    int answered = 0; ///< calls that went well

  private:
    using Connection = freedesktop::GObjectPointer<GDBusConnection>;

    static Connection connect(const std::string &address) {
        constexpr auto flags = static_cast<GDBusConnectionFlags>(
            G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        return Connection(
            g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr));
    }

    static void ended(GObject *bus, GAsyncResult *result, gpointer self) {
        GError *error = nullptr;
        const freedesktop::GVariantPointer reply(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
        const freedesktop::GErrorPointer failure(error);
        if (reply)
            ++static_cast<BusSender *>(self)->answered;
        else
            ADD_FAILURE() << failure->message;
    }

    Connection bus;
};

} // namespace fernhop::desktoptest
