#include "platform/linux/tray/PortalAppearance.h"

#include "TrayHost.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using ui::AppearanceName;

/// The settings portal, which answers as version 1 of its interface does.
class Portal {
  public:
    Portal(const std::string &address, const char *colorScheme)
        : connection(connectTo(address)), scheme(colorScheme),
          object(connection.get(), "/org/freedesktop/portal/desktop", introspection,
                 {[this](auto, auto *, auto *call) {
                      ++reads;
                      g_dbus_method_invocation_return_value(
                          call, g_variant_new("(v)", g_variant_new_variant(g_variant_new_parsed(scheme))));
                  },
                  [](auto) -> GVariant * { return nullptr; }}),
          name(g_bus_own_name_on_connection(connection.get(), "org.freedesktop.portal.Desktop",
                                            G_BUS_NAME_OWNER_FLAGS_NONE, acquired, nullptr, this, nullptr)) {
        (void)support::runUntil([this] { return isThere; });
    }
    ~Portal() {
        g_bus_unown_name(name);
        g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
    }
    Portal(const Portal &) = delete;
    Portal &operator=(const Portal &) = delete;

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
        static_cast<Portal *>(self)->isThere = true;
    }

    BusConnection connection;
    const char *scheme;
    BusObject object;
    bool isThere = false;
    guint name;
};

class PortalAppearanceTest : public testing::Test {
  protected:
    [[nodiscard]] static std::optional<AppearanceName> best(const PortalAppearance &appearance) {
        return appearance.bestMatchFromAppearancesWithNames({AppearanceName::darkAqua, AppearanceName::aqua});
    }

    support::TemporaryHome home;
    support::PrivateBus bus{home};
    BusConnection connection = connectTo(bus.address());
    int changes = 0;
};

TEST_F(PortalAppearanceTest, IsLightWithoutAPortal) {
    const PortalAppearance appearance(connection.get(), [&] { ++changes; });
    Host(bus.address(), "org.example").settle();
    EXPECT_EQ(best(appearance), AppearanceName::aqua);
    EXPECT_EQ(appearance.bestMatchFromAppearancesWithNames({AppearanceName::darkAqua}), std::nullopt);
    EXPECT_EQ(changes, 0);
}

TEST_F(PortalAppearanceTest, FollowsThePortal) {
    const Portal portal(bus.address(), "uint32 1");
    const PortalAppearance appearance(connection.get(), [&] { ++changes; });
    ASSERT_TRUE(support::runUntil([&] { return changes == 1; }));
    EXPECT_EQ(best(appearance), AppearanceName::darkAqua);
    portal.change("org.freedesktop.appearance", "color-scheme", "uint32 2");
    ASSERT_TRUE(support::runUntil([&] { return changes == 2; }));
    EXPECT_EQ(best(appearance), AppearanceName::aqua);
}

TEST_F(PortalAppearanceTest, TellsWhatTheUserAsksFor) {
    const Portal portal(bus.address(), "uint32 2");
    const PortalAppearance appearance(connection.get(), [&] { ++changes; });
    EXPECT_EQ(appearance.stated(), std::nullopt);
    ASSERT_TRUE(support::runUntil([&] { return changes == 1; }));
    EXPECT_EQ(appearance.stated(), AppearanceName::aqua);
    portal.change("org.freedesktop.appearance", "color-scheme", "uint32 1");
    ASSERT_TRUE(support::runUntil([&] { return changes == 2; }));
    EXPECT_EQ(appearance.stated(), AppearanceName::darkAqua);
    portal.change("org.freedesktop.appearance", "color-scheme", "uint32 0");
    ASSERT_TRUE(support::runUntil([&] { return changes == 3; }));
    EXPECT_EQ(appearance.stated(), std::nullopt);
    EXPECT_EQ(best(appearance), AppearanceName::aqua);
}

TEST_F(PortalAppearanceTest, TellsOnlyOfChangesThatShow) {
    const Portal portal(bus.address(), "uint32 0");
    const PortalAppearance appearance(connection.get(), [&] { ++changes; });
    ASSERT_TRUE(support::runUntil([&] { return portal.reads == 1; }));
    portal.change("org.freedesktop.appearance", "color-scheme", "'dark'");
    portal.change("org.freedesktop.appearance", "color-scheme", "uint32 77");
    portal.change("org.freedesktop.appearance", "accent-color", "uint32 1");
    portal.change("org.gnome.desktop.interface", "color-scheme", "uint32 1");
    portal.change("org.freedesktop.appearance", "color-scheme", "uint32 1");
    ASSERT_TRUE(support::runUntil([&] { return changes > 0; }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(best(appearance), AppearanceName::darkAqua);
}

} // namespace
} // namespace fernhop::freedesktop
