#include "platform/linux/links/stub/SenderEvidence.h"

#include "support/Environment.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace fernhop::stub {
namespace {

TEST(SenderEvidence, ReadsTheEnvironment) {
    const support::ScopedEnvironment environment(
        {{"XDG_ACTIVATION_TOKEN", "token"},
         {"DESKTOP_STARTUP_ID", "id"},
         {"GIO_LAUNCHED_DESKTOP_FILE_PID", "77"},
         {"GIO_LAUNCHED_DESKTOP_FILE", "/usr/share/applications/chat.desktop"},
         {"BAMF_DESKTOP_FILE_HINT", std::nullopt}});
    const auto evidence = readSenderEvidence();
    EXPECT_EQ(evidence.activationToken, "token");
    EXPECT_EQ(evidence.startupID, "id");
    EXPECT_EQ(evidence.launchedPid, 77);
    EXPECT_EQ(evidence.parentPid, getppid());
    EXPECT_EQ(evidence.desktopFile, "chat") << "another process was launched for it, and started us";
}

TEST(SenderEvidence, TheFileOfOurOwnLaunchIsNotTheSenders) {
    const support::ScopedEnvironment environment(
        {{"GIO_LAUNCHED_DESKTOP_FILE_PID", std::to_string(getpid())},
         {"GIO_LAUNCHED_DESKTOP_FILE", "/usr/share/applications/org.fernhop.Fernhop.desktop"},
         {"BAMF_DESKTOP_FILE_HINT", std::nullopt}});
    const auto evidence = readSenderEvidence();
    EXPECT_EQ(evidence.launchedPid, getpid());
    EXPECT_EQ(evidence.desktopFile, "");
}

TEST(SenderEvidence, ANumberThatIsNoneIsNotTold) {
    for (const char *text : {"", "x", "0"}) {
        const support::Environment changes = {{"GIO_LAUNCHED_DESKTOP_FILE_PID", text}};
        const support::ScopedEnvironment environment(changes);
        EXPECT_EQ(readSenderEvidence().launchedPid, 0) << text;
    }
}

TEST(SenderEvidence, FindsTheUnifiedControlGroup) {
    EXPECT_EQ(unifiedControlGroup("12:pids:/x\n0::/user.slice/app-chat-1.scope\n"),
              "/user.slice/app-chat-1.scope");
    EXPECT_EQ(unifiedControlGroup("0::/"), "/");
    EXPECT_EQ(unifiedControlGroup("10::/x\n"), "");
    EXPECT_EQ(unifiedControlGroup(""), "");
}

TEST(SenderEvidence, NamesDesktopFilesByTheirId) {
    EXPECT_EQ(desktopIDOfPath("/usr/share/applications/org.example.Chat.desktop"), "org.example.Chat");
    EXPECT_EQ(desktopIDOfPath("/home/u/.local/share/applications/kde/web.desktop"), "kde-web");
    EXPECT_EQ(desktopIDOfPath("/elsewhere/chat.desktop"), "chat");
    EXPECT_EQ(desktopIDOfPath("/usr/bin/chat"), "");
    EXPECT_EQ(desktopIDOfPath(".desktop"), "");
    EXPECT_EQ(desktopIDOfPath(""), "");
}

} // namespace
} // namespace fernhop::stub
