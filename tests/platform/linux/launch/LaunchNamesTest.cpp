#include "platform/linux/launch/BusActivation.h"
#include "platform/linux/launch/LaunchScope.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

TEST(LaunchScopeName, EscapesWhatUnitNamesMayNotHold) {
    EXPECT_EQ(launchScopeName("firefox", "12ab"), "app-fernhop-firefox-12ab.scope");
    EXPECT_EQ(launchScopeName("org.kde-web", "1"), "app-fernhop-org.kde\\x2dweb-1.scope");
    EXPECT_EQ(launchScopeName(".a b/c", "1"), "app-fernhop-\\x2ea\\x20b\\x2fc-1.scope");
}

TEST(ApplicationObjectPath, FollowsFromTheName) {
    EXPECT_EQ(applicationObjectPath("org.example.Web"), "/org/example/Web");
    EXPECT_EQ(applicationObjectPath("org.example-site.Web-2"), "/org/example_site/Web_2");
}

} // namespace
} // namespace fernhop::freedesktop
