#include "support/HeadlessKWin.h"
#include "support/HeadlessSway.h"
#include "support/PrivateBus.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <filesystem>

namespace fernhop::support {
namespace {

TEST(ChildProcess, TellsHowItEnded) {
    EXPECT_EQ(ChildProcess({{"sh", "-c", "exit 7"}, {}}).wait(), 7);
    EXPECT_EQ(ChildProcess({{"no-such-program-anywhere"}, {}}).wait(), 127);
    ChildProcess sleeper({{"sleep", "1000"}, {}});
    EXPECT_TRUE(sleeper.isRunning());
    sleeper.signal(SIGKILL);
    EXPECT_EQ(sleeper.wait(), 128 + SIGKILL);
}

TEST(ChildProcess, EndsWithItsObject) {
    pid_t pid = 0;
    {
        const ChildProcess sleeper({{"sleep", "1000"}, {}});
        pid = sleeper.pid();
    }
    EXPECT_NE(kill(pid, 0), 0);
}

TEST(TemporaryHome, IsGoneAfterwards) {
    std::string root;
    {
        const TemporaryHome home;
        root = home.root();
        home.writeDesktopEntry("org.example.App", "[Desktop Entry]\n");
        EXPECT_TRUE(std::filesystem::exists(home.applications() + "/org.example.App.desktop"));
    }
    EXPECT_FALSE(std::filesystem::exists(root));
}

TEST(PrivateBus, AnswersAtItsAddress) {
    const TemporaryHome home;
    const PrivateBus bus(home);
    ChildProcess call({{"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                        "org.freedesktop.DBus.GetId"},
                       home.environment() + bus.environment()});
    EXPECT_EQ(call.wait(), 0);
}

TEST(PrivateDisplay, HasAServer) {
    if (!PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const TemporaryHome home;
    PrivateDisplay display(home);
    const Command question{{"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"},
                           home.environment() + display.environment()};
    EXPECT_EQ(ChildProcess(question).wait(), 0);
    display.kill();
    EXPECT_NE(ChildProcess(question).wait(), 0);
}

TEST(HeadlessSway, TakesCommands) {
    if (!HeadlessSway::isAvailable())
        GTEST_SKIP() << "sway is not installed";
    const HeadlessSway sway;
    EXPECT_TRUE(sway.command("nop"));
    EXPECT_FALSE(sway.command("no-such-command"));
}

TEST(HeadlessKWin, HasASocket) {
    if (!HeadlessKWin::isAvailable())
        GTEST_SKIP() << "kwin_wayland is not installed";
    const HeadlessKWin kwin;
    EXPECT_TRUE(std::filesystem::exists(*kwin.environment().at("WAYLAND_DISPLAY")));
}

} // namespace
} // namespace fernhop::support
