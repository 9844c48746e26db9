#include "platform/linux/launch/LaunchCommand.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

TEST(TokensForLaunch, ForwardsBothAsTheyCame) {
    EXPECT_EQ(tokensForLaunch({"token", "startup"}, true), (LaunchTokens{"token", "startup"}));
    EXPECT_EQ(tokensForLaunch({"token", "startup"}, false), (LaunchTokens{"token", "startup"}));
}

TEST(TokensForLaunch, AStartupIdThatCameAloneIsATokenOnWayland) {
    EXPECT_EQ(tokensForLaunch({std::nullopt, "startup"}, true), (LaunchTokens{"startup", "startup"}));
    EXPECT_EQ(tokensForLaunch({std::nullopt, "startup"}, false), (LaunchTokens{std::nullopt, "startup"}));
}

TEST(TokensForLaunch, ATokenAloneIsNoStartupId) {
    EXPECT_EQ(tokensForLaunch({"token", std::nullopt}, true), (LaunchTokens{"token", std::nullopt}));
}

TEST(TokensForLaunch, DropsWhatNoEnvironmentCanHold) {
    EXPECT_EQ(tokensForLaunch({"", std::string("a\0b", 3)}, true), LaunchTokens{});
    EXPECT_EQ(tokensForLaunch({std::string(200'000, 'x'), "startup"}, true),
              (LaunchTokens{"startup", "startup"}));
}

TEST(IsWaylandSession, GoesByTheDisplayThatClientsConnectTo) {
    EXPECT_TRUE(isWaylandSession(Environment({"WAYLAND_DISPLAY=wayland-0", "DISPLAY=:0"})));
    EXPECT_FALSE(isWaylandSession(Environment({"WAYLAND_DISPLAY=", "DISPLAY=:0"})));
    EXPECT_FALSE(isWaylandSession(Environment({"DISPLAY=:0"})));
}

TEST(LaunchEnvironment, LeavesTheUsersVariablesAlone) {
    const auto environment =
        launchEnvironment(Environment({"PATH=/bin", "LANG=de_DE.UTF-8", "DISPLAY=:1"}), {}, "/a");
    EXPECT_EQ(environment.value("PATH"), "/bin");
    EXPECT_EQ(environment.value("LANG"), "de_DE.UTF-8");
    EXPECT_EQ(environment.value("DISPLAY"), ":1");
}

TEST(LaunchEnvironment, LeaksNothingOfThisProcess) {
    for (const std::string name : {"XDG_ACTIVATION_TOKEN",
                                   "DESKTOP_STARTUP_ID",
                                   "GIO_LAUNCHED_DESKTOP_FILE_PID",
                                   "BAMF_DESKTOP_FILE_HINT",
                                   "DESKTOP_AUTOSTART_ID",
                                   "JOURNAL_STREAM",
                                   "INVOCATION_ID",
                                   "NOTIFY_SOCKET",
                                   "LISTEN_PID",
                                   "LISTEN_FDS",
                                   "LISTEN_FDNAMES",
                                   "WATCHDOG_PID",
                                   "WATCHDOG_USEC",
                                   "MAINPID",
                                   "MANAGERPID",
                                   "SYSTEMD_EXEC_PID",
                                   "MEMORY_PRESSURE_WATCH",
                                   "MEMORY_PRESSURE_WRITE",
                                   "CREDENTIALS_DIRECTORY",
                                   "DBUS_STARTER_ADDRESS",
                                   "DBUS_STARTER_BUS_TYPE",
                                   "FERNHOP_ANYTHING"}) {
        EXPECT_EQ(launchEnvironment(Environment({name + "=ours"}), {}, "/a").value(name), std::nullopt)
            << name;
    }
}

TEST(LaunchEnvironment, SetsExactlyTheTokensOfTheLaunch) {
    const Environment base({"XDG_ACTIVATION_TOKEN=old", "DESKTOP_STARTUP_ID=old"});
    const auto environment = launchEnvironment(base, {"token", std::nullopt}, "/a");
    EXPECT_EQ(environment.value("XDG_ACTIVATION_TOKEN"), "token");
    EXPECT_EQ(environment.value("DESKTOP_STARTUP_ID"), std::nullopt);
    EXPECT_EQ(launchEnvironment(base, {std::nullopt, "id"}, "/a").value("DESKTOP_STARTUP_ID"), "id");
}

TEST(LaunchEnvironment, NamesTheDesktopFileOfTheLaunch) {
    const Environment base({"GIO_LAUNCHED_DESKTOP_FILE=/ours.desktop"});
    EXPECT_EQ(launchEnvironment(base, {}, "/its.desktop").value("GIO_LAUNCHED_DESKTOP_FILE"), "/its.desktop");
}

TEST(LaunchCommands, TakeTheUsersTerminalFirst) {
    const support::TemporaryHome home;
    const auto bin = home.root() + "/bin";
    DesktopEntry entry;
    entry.name = "Web";
    entry.exec = "web %u";
    entry.terminal = true;
    const auto command = [&] { return launchCommands(entry, {"x:"}, bin)->at(0); };
    EXPECT_EQ(launchCommands(entry, {"x:"}, bin).failure().reason,
              "Web needs a terminal, and none is installed");
    home.writeProgram(bin + "/xterm", "");
    EXPECT_EQ(command(), (Command{bin + "/xterm", "-e", "web", "x:"}));
    home.writeProgram(bin + "/gnome-terminal", "");
    EXPECT_EQ(command(), (Command{bin + "/gnome-terminal", "--", "web", "x:"}));
    home.writeProgram(bin + "/x-terminal-emulator", "");
    EXPECT_EQ(command(), (Command{bin + "/x-terminal-emulator", "-e", "web", "x:"}));
    home.writeProgram(bin + "/xdg-terminal-exec", "");
    EXPECT_EQ(command(), (Command{bin + "/xdg-terminal-exec", "web", "x:"}));
}

} // namespace
} // namespace fernhop::freedesktop
