#include "platform/linux/tray/PortalAppearance.h"

#include "SettingsPortal.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using ui::AppearanceName;

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
    const SettingsPortal portal(bus.address(), "uint32 1");
    const PortalAppearance appearance(connection.get(), [&] { ++changes; });
    ASSERT_TRUE(support::runUntil([&] { return changes == 1; }));
    EXPECT_EQ(best(appearance), AppearanceName::darkAqua);
    portal.change("org.freedesktop.appearance", "color-scheme", "uint32 2");
    ASSERT_TRUE(support::runUntil([&] { return changes == 2; }));
    EXPECT_EQ(best(appearance), AppearanceName::aqua);
}

TEST_F(PortalAppearanceTest, AsksAPortalThatComesLateAndOneThatComesAgain) {
    const PortalAppearance appearance(connection.get(), [&] { ++changes; });
    Host(bus.address(), "org.example").settle();
    {
        const SettingsPortal portal(bus.address(), "uint32 1");
        ASSERT_TRUE(support::runUntil([&] { return changes == 1; }));
        EXPECT_EQ(best(appearance), AppearanceName::darkAqua);
    }
    const SettingsPortal portal(bus.address(), "uint32 2");
    ASSERT_TRUE(support::runUntil([&] { return changes == 2; }));
    EXPECT_EQ(best(appearance), AppearanceName::aqua);
}

TEST_F(PortalAppearanceTest, TellsWhatTheUserAsksFor) {
    const SettingsPortal portal(bus.address(), "uint32 2");
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
    const SettingsPortal portal(bus.address(), "uint32 0");
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
