#include "platform/linux/base/Environment.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace fernhop::freedesktop {
namespace {

using Assignments = std::vector<std::string>;

TEST(Environment, KeepsValuesByteForByte) {
    const Environment environment({"A=1", "B=a=b\n\xff", "EMPTY="});
    EXPECT_EQ(environment.value("A"), "1");
    EXPECT_EQ(environment.value("B"), "a=b\n\xff");
    EXPECT_EQ(environment.value("EMPTY"), "");
    EXPECT_EQ(environment.value("a"), std::nullopt);
}

TEST(Environment, KeepsTheFirstOfEachNameAndDropsUnnamedEntries) {
    const Environment environment({"A=1", "A=2", "=x", "no equals", ""});
    EXPECT_EQ(environment.assignments(), Assignments{"A=1"});
}

TEST(Environment, SetsAndUnsets) {
    Environment environment({"A=1", "B=2", "DBUS_X=3", "DBUS_Y=4", "MY_DBUS_=5"});
    environment.set("A", "new");
    environment.set("C", "6");
    environment.unset("B");
    environment.unset("never there");
    environment.unsetPrefixed("DBUS_");
    EXPECT_EQ(environment.assignments(), (Assignments{"A=new", "C=6", "MY_DBUS_=5"}));
}

TEST(Environment, CopiesThatOfTheProcess) {
    setenv("FERNHOP_ENVIRONMENT_TEST", "before", 1);
    const auto environment = Environment::current();
    setenv("FERNHOP_ENVIRONMENT_TEST", "after", 1);
    EXPECT_EQ(environment.value("FERNHOP_ENVIRONMENT_TEST"), "before");
    unsetenv("FERNHOP_ENVIRONMENT_TEST");
}

XdgSession session(const std::vector<std::string> &assignments) {
    return XdgSession::of(Environment(assignments));
}

TEST(XdgSession, FollowsTheVariables) {
    const auto found =
        session({"HOME=/home/me", "XDG_CONFIG_HOME=/c", "XDG_CONFIG_DIRS=/e1:relative::/e2/",
                 "XDG_DATA_HOME=/d/", "XDG_DATA_DIRS=/s1:/s2:", "XDG_CURRENT_DESKTOP=ubuntu:GNOME"});
    EXPECT_EQ(found.home, "/home/me");
    EXPECT_EQ(found.allConfigFolders(), (Assignments{"/c", "/e1", "/e2"}));
    EXPECT_EQ(found.allDataFolders(), (Assignments{"/d", "/s1", "/s2"}));
    EXPECT_EQ(found.desktops, (Assignments{"ubuntu", "gnome"}));
    EXPECT_TRUE(found.isDesktop("gnome"));
    EXPECT_FALSE(found.isDesktop("xfce"));
}

TEST(XdgSession, HasDefaults) {
    const auto found = session({"HOME=/home/me", "XDG_CONFIG_HOME=relative", "XDG_DATA_DIRS="});
    EXPECT_EQ(found.allConfigFolders(), (Assignments{"/home/me/.config", "/etc/xdg"}));
    EXPECT_EQ(found.allDataFolders(),
              (Assignments{"/home/me/.local/share", "/usr/local/share", "/usr/share"}));
    EXPECT_TRUE(found.desktops.empty());
}

TEST(XdgSession, HasAHomeEvenWithoutTheVariable) {
    EXPECT_TRUE(session({}).home.starts_with('/'));
    EXPECT_EQ(session({"XDG_DATA_HOME=/somewhere"}).dataHome, "/somewhere");
    for (const auto *home : {"HOME=", "HOME=relative", "HOME=."})
        EXPECT_EQ(session({home}).configHome, session({}).configHome) << "never in the working directory";
}

TEST(XdgSession, TakesNoPathForADesktopName) {
    EXPECT_EQ(session({"XDG_CURRENT_DESKTOP=:../../etc:KDE::"}).desktops, Assignments{"kde"});
}

} // namespace
} // namespace fernhop::freedesktop
