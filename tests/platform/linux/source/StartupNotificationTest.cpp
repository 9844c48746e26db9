#include "platform/linux/source/StartupNotification.h"

#include "support/PrivateDisplay.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

TEST(StartupNotification, QuotesItsValues) {
    EXPECT_EQ(startupMessage("id_TIME5", {"org.example.Web", "A \"web\" \\ browser", ""}),
              "new: ID=\"id_TIME5\" NAME=\"A \\\"web\\\" \\\\ browser\" SCREEN=0 "
              "APPLICATION_ID=\"org.example.Web.desktop\"");
    EXPECT_EQ(startupMessage("i", {"w", std::string("a\0b", 3), "Web"}),
              "new: ID=\"i\" NAME=\"ab\" SCREEN=0 APPLICATION_ID=\"w.desktop\" WMCLASS=\"Web\"");
}

TEST(StartupNotification, IsNoneWithoutADisplay) {
    EXPECT_EQ(announceStartup(":no-display", {"web", "Web", ""}), std::nullopt);
    withdrawStartup(":no-display", "id");
}

TEST(StartupNotification, TheIdentifierCarriesTheTimeOfTheDisplay) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "no Xvfb and openbox here";
    const support::TemporaryHome home;
    const support::PrivateDisplay display(home);
    const auto first = announceStartup(display.name(), {"web", "Web", ""});
    const auto second = announceStartup(display.name(), {"web", "Web", ""});
    ASSERT_TRUE(first && second);
    EXPECT_NE(*first, *second);
    const auto time = first->rfind("_TIME");
    ASSERT_NE(time, std::string::npos);
    EXPECT_GT(std::stoul(first->substr(time + 5)), 0U);
    withdrawStartup(display.name(), *first);
}

} // namespace
} // namespace fernhop::freedesktop
