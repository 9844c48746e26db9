#include "platform/linux/stub/LinkOrigin.h"

#include "support/Environment.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace fernhop::stub {
namespace {

TEST(LinkOrigin, ReadsTheEnvironment) {
    const support::ScopedEnvironment environment(
        {{"XDG_ACTIVATION_TOKEN", "token"},
         {"DESKTOP_STARTUP_ID", "id"},
         {"GIO_LAUNCHED_DESKTOP_FILE_PID", "77"},
         {"GIO_LAUNCHED_DESKTOP_FILE", "/usr/share/applications/chat.desktop"},
         {"BAMF_DESKTOP_FILE_HINT", std::nullopt}});
    const auto origin = readLinkOrigin();
    EXPECT_EQ(origin.activationToken, "token");
    EXPECT_EQ(origin.startupID, "id");
    EXPECT_EQ(origin.launchedPid, 77);
    EXPECT_EQ(origin.parentPid, getppid());
    EXPECT_EQ(origin.desktopFile, "chat") << "another process was launched for it, and started us";
}

TEST(LinkOrigin, TheFileOfOurOwnLaunchIsNotTheSenders) {
    const support::ScopedEnvironment environment(
        {{"GIO_LAUNCHED_DESKTOP_FILE_PID", std::to_string(getpid())},
         {"GIO_LAUNCHED_DESKTOP_FILE", "/usr/share/applications/org.fernhop.Fernhop.desktop"},
         {"BAMF_DESKTOP_FILE_HINT", std::nullopt}});
    const auto origin = readLinkOrigin();
    EXPECT_EQ(origin.launchedPid, getpid());
    EXPECT_EQ(origin.desktopFile, "");
}

TEST(LinkOrigin, ANumberThatIsNoneIsNotTold) {
    for (const char *text : {"", "x", "0"}) {
        const support::Environment changes = {{"GIO_LAUNCHED_DESKTOP_FILE_PID", text}};
        const support::ScopedEnvironment environment(changes);
        EXPECT_EQ(readLinkOrigin().launchedPid, 0) << text;
    }
}

TEST(LinkOrigin, NamesDesktopFilesByTheirId) {
    EXPECT_EQ(desktopIDOfPath("/usr/share/applications/org.example.Chat.desktop"), "org.example.Chat");
    EXPECT_EQ(desktopIDOfPath("/home/u/.local/share/applications/kde/web.desktop"), "kde-web");
    EXPECT_EQ(desktopIDOfPath("/elsewhere/chat.desktop"), "chat");
    EXPECT_EQ(desktopIDOfPath("/usr/bin/chat"), "");
    EXPECT_EQ(desktopIDOfPath(".desktop"), "");
    EXPECT_EQ(desktopIDOfPath(""), "");
}

} // namespace
} // namespace fernhop::stub
