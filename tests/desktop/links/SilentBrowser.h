#pragma once

#include <gio/gio.h>

#include <vector>

namespace fernhop::desktoptest {

/// A browser on the bus that does not answer until it is told to.
class SilentBrowser {
  public:
    static constexpr const char *desktopEntry =
        "[Desktop Entry]\nType=Application\nName=Silent\nExec=false %u\nDBusActivatable=true\n"
        "MimeType=x-scheme-handler/https;\n";

    explicit SilentBrowser(GDBusConnection *bus) {
        static constexpr GDBusInterfaceVTable calls = {
            [](GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *, GVariant *,
               GDBusMethodInvocation *invocation,
               gpointer self) { static_cast<SilentBrowser *>(self)->asked.push_back(invocation); },
            nullptr,
            nullptr,
            {}};
        GDBusNodeInfo *node =
            g_dbus_node_info_new_for_xml("<node><interface name='org.freedesktop.Application'><method "
                                         "name='Open'><arg type='as' direction='in'/>"
                                         "<arg type='a{sv}' direction='in'/></method></interface></node>",
                                         nullptr);
        g_dbus_connection_register_object(bus, "/org/example/Silent", node->interfaces[0], &calls, this,
                                          nullptr, nullptr);
        g_dbus_node_info_unref(node);
        GVariant *reply = g_dbus_connection_call_sync(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                      "org.freedesktop.DBus", "RequestName",
                                                      g_variant_new("(su)", "org.example.Silent", 0U),
                                                      nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        g_variant_unref(reply);
    }
    void answer() {
        for (GDBusMethodInvocation *invocation : asked)
            g_dbus_method_invocation_return_value(invocation, nullptr);
        asked.clear();
    }

    std::vector<GDBusMethodInvocation *> asked;
};

} // namespace fernhop::desktoptest
