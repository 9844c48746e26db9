#include "platform/linux/focus/ThemeNotifications.h"

#include "support/MainLoop.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

class ThemeNotificationsTest : public testing::Test {
  protected:
    static GObjectPointer<GDBusConnection> connect(const std::string &address) {
        return GObjectPointer<GDBusConnection>(g_dbus_connection_new_for_address_sync(
            address.c_str(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr));
    }

    void SetUp() override {
        center.addObserver(themeChangedNotification, [this](const Notification &) { ++posts; });
        call(client.get(), "GetId", nullptr); // the match rule has reached the bus
        own(portal.get());
    }

    static void call(GDBusConnection *bus, const char *method, GVariant *arguments) {
        const GVariantPointer reply(g_dbus_connection_call_sync(
            bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments,
            nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        ASSERT_TRUE(reply) << method;
    }

    void own(GDBusConnection *bus) {
        call(bus, "RequestName", g_variant_new("(su)", "org.freedesktop.portal.Desktop", 0u));
    }

    static void tell(GDBusConnection *bus, GVariant *parameters) {
        g_dbus_connection_emit_signal(bus, nullptr, "/org/freedesktop/portal/desktop",
                                      "org.freedesktop.portal.Settings", "SettingChanged", parameters,
                                      nullptr);
        g_dbus_connection_flush_sync(bus, nullptr, nullptr);
    }

    void tellSetting(const char *space, const char *key, GVariant *value) {
        tell(portal.get(), g_variant_new("(ssv)", space, key, value));
    }

    void tellScheme(guint32 scheme) {
        tellSetting("org.freedesktop.appearance", "color-scheme", g_variant_new_uint32(scheme));
    }

    bool countBecomes(int count) {
        return support::runUntil([&] { return posts == count; });
    }

    support::TemporaryHome home;
    support::PrivateBus daemon{home};
    GObjectPointer<GDBusConnection> client = connect(daemon.address());
    GObjectPointer<GDBusConnection> portal = connect(daemon.address());
    PostingNotificationCenter center;
    ThemeNotifications theme{client.get(), center};
    int posts = 0;
};

TEST_F(ThemeNotificationsTest, AChangeOfTheColourSchemeIsPosted) {
    tellScheme(1);
    EXPECT_TRUE(countBecomes(1));
    tellScheme(0);
    EXPECT_TRUE(countBecomes(2));
}

TEST_F(ThemeNotificationsTest, NothingElseIsPosted) {
    tellScheme(1);
    tellScheme(1);
    tellSetting("org.freedesktop.appearance", "accent-color", g_variant_new_uint32(0));
    tellSetting("org.gnome.desktop.interface", "color-scheme", g_variant_new_uint32(0));
    tellSetting("org.freedesktop.appearance", "color-scheme", g_variant_new_string("dark"));
    tell(portal.get(), g_variant_new("(s)", "org.freedesktop.appearance"));
    tell(portal.get(), nullptr);
    const auto stranger = connect(daemon.address());
    tell(stranger.get(),
         g_variant_new("(ssv)", "org.freedesktop.appearance", "color-scheme", g_variant_new_uint32(0)));
    tellScheme(2);
    EXPECT_TRUE(countBecomes(2)) << posts;
    support::runPending();
    EXPECT_EQ(posts, 2);
}

TEST_F(ThemeNotificationsTest, AnEndOfTheBusDoesNoHarm) {
    g_dbus_connection_set_exit_on_close(client.get(), FALSE);
    g_dbus_connection_set_exit_on_close(portal.get(), FALSE);
    tellScheme(1);
    EXPECT_TRUE(countBecomes(1));
    daemon.stop();
    EXPECT_TRUE(support::runUntil([&] { return g_dbus_connection_is_closed(client.get()) != FALSE; }));
    EXPECT_EQ(posts, 1);
}

TEST(ThemeNotifications, WithoutABusThereAreNone) {
    PostingNotificationCenter center;
    const ThemeNotifications theme(nullptr, center);
}

} // namespace
} // namespace fernhop::freedesktop
