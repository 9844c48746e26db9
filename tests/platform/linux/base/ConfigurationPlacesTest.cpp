#include "platform/linux/base/ConfigurationPlaces.h"

#include "support/Environment.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using support::ScopedEnvironment;
using Texts = std::vector<std::string>;

TEST(ConfigurationPlaces, FollowTheVariables) {
    const ScopedEnvironment environment({{"HOME", "/home/me"},
                                         {"XDG_CONFIG_HOME", "/c"},
                                         {"XDG_CONFIG_DIRS", "/e1:relative::/e2"},
                                         {"XDG_DATA_HOME", "/d"},
                                         {"XDG_DATA_DIRS", "/s1:/s2:"}});
    const auto places = ConfigurationPlaces::fromEnvironment("ubuntu:GNOME");
    EXPECT_EQ(places.allConfigFolders(), (Texts{"/c", "/e1", "/e2"}));
    EXPECT_EQ(places.allDataFolders(), (Texts{"/d", "/s1", "/s2"}));
    EXPECT_EQ(places.desktops, (Texts{"ubuntu", "gnome"}));
    EXPECT_TRUE(places.isDesktop("gnome"));
    EXPECT_FALSE(places.isDesktop("xfce"));
}

TEST(ConfigurationPlaces, HaveStandards) {
    const ScopedEnvironment environment({{"HOME", "/home/me"},
                                         {"XDG_CONFIG_HOME", "relative"},
                                         {"XDG_CONFIG_DIRS", std::nullopt},
                                         {"XDG_DATA_HOME", std::nullopt},
                                         {"XDG_DATA_DIRS", ""}});
    const auto places = ConfigurationPlaces::fromEnvironment("");
    EXPECT_EQ(places.allConfigFolders(), (Texts{"/home/me/.config", "/etc/xdg"}));
    EXPECT_EQ(places.allDataFolders(), (Texts{"/home/me/.local/share", "/usr/local/share", "/usr/share"}));
    EXPECT_TRUE(places.desktops.empty());
}

TEST(ConfigurationPlaces, TakeNoPathForADesktopName) {
    EXPECT_EQ(ConfigurationPlaces::fromEnvironment(":../../etc:KDE::").desktops, Texts{"kde"});
}

} // namespace
} // namespace fernhop::freedesktop
