#pragma once

#include "TrayHost.h"
#include "support/MainLoop.h"

#include <string>

namespace fernhop::freedesktop {

/// The settings portal, which answers as version 1 of its interface does.
class SettingsPortal {
  public:
    SettingsPortal(const std::string &address, const char *colorScheme)
        : connection(connectTo(address)), scheme(colorScheme),
          object(connection.get(), "/org/freedesktop/portal/desktop", *node->interfaces[0],
                 {[this](auto, auto *, auto *call) {
                      ++reads;
                      g_dbus_method_invocation_return_value(
                          call, g_variant_new("(v)", g_variant_new_variant(g_variant_new_parsed(scheme))));
                  },
                  [](auto) -> GVariant * { return nullptr; }}),
          name(g_bus_own_name_on_connection(connection.get(), "org.freedesktop.portal.Desktop",
                                            G_BUS_NAME_OWNER_FLAGS_NONE, acquired, nullptr, this, nullptr)) {
        (void)support::runUntil([this] { return ownsName; });
    }
    ~SettingsPortal() {
        g_bus_unown_name(name);
        g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
    }
    SettingsPortal(const SettingsPortal &) = delete;
    SettingsPortal &operator=(const SettingsPortal &) = delete;

    void change(const char *group, const char *key, const char *value) const {
        object.emit("SettingChanged", g_variant_new("(ssv)", group, key, g_variant_new_parsed(value)));
        g_dbus_connection_flush_sync(connection.get(), nullptr, nullptr);
    }

    int reads = 0;

  private:
    static constexpr const char *introspection = R"XML(
<node>
  <interface name="org.freedesktop.portal.Settings">
    <method name="Read">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
  </interface>
</node>)XML";

    static void acquired(GDBusConnection *, const gchar *, gpointer self) {
        static_cast<SettingsPortal *>(self)->ownsName = true;
    }

    const NodeInfoPointer node{g_dbus_node_info_new_for_xml(introspection, nullptr)};
    BusConnection connection;
    const char *scheme;
    BusObject object;
    bool ownsName = false;
    guint name;
};

} // namespace fernhop::freedesktop
