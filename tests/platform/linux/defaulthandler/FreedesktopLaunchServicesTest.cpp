#include "Session.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace fernhop::freedesktop {
namespace {

namespace files = std::filesystem;

class EveryDesktop : public testing::TestWithParam<const char *> {
  protected:
    Session session;
    std::string desktop = GetParam();
};

INSTANTIATE_TEST_SUITE_P(Handlers, EveryDesktop,
                         testing::Values("GNOME", "ubuntu:GNOME", "KDE", "XFCE", "LXQt", "MATE", "X-Cinnamon",
                                         "X-Generic", "sway", ""));

TEST_P(EveryDesktop, HasNoHandlerWhereNothingIsSetAndNothingDeclaresLinks) {
    session.declareNothing();
    EXPECT_EQ(handler(session, desktop), std::nullopt);
}

TEST_P(EveryDesktop, FollowsAssociationsWhereNoneIsSet) {
    session.home.write(session.home.systemData() + "/applications/mimeinfo.cache",
                       "[MIME Cache]\nx-scheme-handler/https=org.fernhop.Fernhop.desktop;\n");
    session.writeConfig("mimeapps.list",
                        "[Added Associations]\nx-scheme-handler/https=org.fernhop.Fernhop.desktop;\n");
    const bool asks = desktop == "XFCE"; // its opener, which browser to use
    EXPECT_EQ(handler(session, desktop), asks ? std::nullopt : std::optional<std::string>(ownID));
}

TEST_P(EveryDesktop, TakesUsAndGivesBack) {
    EXPECT_TRUE(setBoth(session, desktop, "firefox"));
    EXPECT_EQ(handler(session, desktop), "firefox");
    EXPECT_TRUE(setBoth(session, desktop, ownID));
    EXPECT_EQ(handler(session, desktop), ownID);
    EXPECT_EQ(handler(session, desktop, "http"), ownID);
    EXPECT_TRUE(setBoth(session, desktop, "chromium"));
    EXPECT_EQ(handler(session, desktop), "chromium");
    EXPECT_EQ(handler(session, desktop, "http"), "chromium");
}

TEST_P(EveryDesktop, KeepsTheSchemesApart) {
    ASSERT_TRUE(setBoth(session, desktop, "firefox"));
    auto services = session.services(desktop);
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("http", "chromium"));
    EXPECT_EQ(handler(session, desktop, "http"), "chromium");
    EXPECT_EQ(handler(session, desktop, "https"), "firefox");
    EXPECT_TRUE(services.setDefaultHandlerForUrlScheme("https", ownID));
    EXPECT_EQ(handler(session, desktop, "http"), "chromium");
    EXPECT_EQ(handler(session, desktop, "https"), ownID);
}

TEST_P(EveryDesktop, RefusesWhatIsNotInstalled) {
    ASSERT_TRUE(setBoth(session, desktop, "firefox"));
    const auto before = session.readConfig("mimeapps.list");
    EXPECT_FALSE(setBoth(session, desktop, "gone"));
    EXPECT_FALSE(setBoth(session, desktop, ""));
    EXPECT_FALSE(setBoth(session, desktop, "../../etc/passwd"));
    EXPECT_EQ(handler(session, desktop), "firefox");
    EXPECT_EQ(session.readConfig("mimeapps.list"), before);
}

TEST_P(EveryDesktop, SeesWhatOthersChanged) {
    auto services = session.services(desktop);
    ASSERT_TRUE(setBoth(session, desktop, "firefox"));
    EXPECT_EQ(services.copyDefaultHandlerForUrlScheme("https"), "firefox");
    ASSERT_TRUE(setBoth(session, desktop, ownID));
    EXPECT_EQ(services.copyDefaultHandlerForUrlScheme("https"), ownID);
}

TEST_P(EveryDesktop, LeavesOtherTypesAlone) {
    session.declareNothing();
    session.writeConfig(
        "mimeapps.list",
        "[Default Applications]\ntext/html=firefox.desktop\nx-scheme-handler/mailto=m.desktop\n");
    EXPECT_TRUE(setBoth(session, desktop, ownID));
    EXPECT_EQ(session.readConfig("mimeapps.list"),
              "[Default Applications]\ntext/html=firefox.desktop\nx-scheme-handler/mailto=m.desktop\n"
              "x-scheme-handler/http=org.fernhop.Fernhop.desktop\n"
              "x-scheme-handler/https=org.fernhop.Fernhop.desktop\n");
}

TEST_P(EveryDesktop, OutranksItsOwnList) {
    const auto ownList = "gnome-mimeapps.list";
    const auto names = session.places(desktop).desktops;
    session.writeConfig(ownList, Session::defaults("https", "firefox"));
    if (!names.empty())
        session.writeConfig(names.front() + "-mimeapps.list", Session::defaults("https", "firefox"));
    EXPECT_TRUE(setBoth(session, desktop, ownID));
    EXPECT_EQ(handler(session, desktop), ownID);
    EXPECT_TRUE(setBoth(session, desktop, "chromium"));
    EXPECT_EQ(handler(session, desktop), "chromium");
}

TEST_P(EveryDesktop, RefusesWhatItCannotWrite) {
    ASSERT_EQ(mkfifo(session.config("mimeapps.list").c_str(), 0600), 0);
    EXPECT_FALSE(setBoth(session, desktop, ownID));
    EXPECT_TRUE(files::is_fifo(session.config("mimeapps.list")));
}

class Handlers : public testing::Test {
  protected:
    Session session;
};

TEST_F(Handlers, AreTakenInTheOrderOfTheLists) {
    const auto data = session.home.data() + "/applications/";
    const auto system = session.home.systemData() + "/applications/";
    session.entries.installBrowser("a");
    session.entries.installBrowser("b");
    session.home.write(system + "mimeapps.list", Session::defaults("https", "a"));
    EXPECT_EQ(handler(session, "GNOME"), "a");
    session.home.write(system + "gnome-mimeapps.list", Session::defaults("https", "b"));
    EXPECT_EQ(handler(session, "GNOME"), "b");
    EXPECT_EQ(handler(session, "KDE"), "a");
    session.home.write(data + "mimeapps.list", Session::defaults("https", "firefox"));
    EXPECT_EQ(handler(session, "GNOME"), "firefox");
    session.home.write(session.admin("mimeapps.list"), Session::defaults("https", "chromium"));
    EXPECT_EQ(handler(session, "GNOME"), "chromium");
    session.writeConfig("mimeapps.list", Session::defaults("https", "a"));
    EXPECT_EQ(handler(session, "GNOME"), "a");
    session.writeConfig("gnome-mimeapps.list", Session::defaults("https", "b"));
    EXPECT_EQ(handler(session, "GNOME"), "b");
    session.writeConfig("ubuntu-mimeapps.list", Session::defaults("https", "firefox"));
    EXPECT_EQ(handler(session, "GNOME"), "b");
    EXPECT_EQ(handler(session, "ubuntu:GNOME"), "firefox");
}

TEST_F(Handlers, AreTheFirstInstalledOnes) {
    session.writeConfig("mimeapps.list",
                        "[Default Applications]\n"
                        "x-scheme-handler/https=gone.desktop;firefox.desktop;chromium.desktop;\n");
    EXPECT_EQ(handler(session, "GNOME"), "firefox");
    session.entries.uninstall("firefox");
    EXPECT_EQ(handler(session, "GNOME"), "chromium");
    session.entries.uninstall("chromium");
    EXPECT_EQ(handler(session, "GNOME"), std::nullopt);
}

TEST_F(Handlers, AreOnlyTheFirstOnesWithoutADesktop) {
    session.declareNothing();
    session.writeConfig("mimeapps.list", "[Default Applications]\n"
                                         "x-scheme-handler/https=gone.desktop;firefox.desktop;\n");
    EXPECT_EQ(handler(session, "sway"), std::nullopt);
    session.writeConfig("mimeapps.list", "[Default Applications]\n"
                                         "x-scheme-handler/https=chromium.desktop;firefox.desktop;\n");
    EXPECT_EQ(handler(session, "sway"), "chromium");
}

TEST_F(Handlers, StandBehindUs) {
    ASSERT_TRUE(setBoth(session, "GNOME", "chromium"));
    ASSERT_TRUE(setBoth(session, "GNOME", ownID));
    EXPECT_EQ(session.readConfig("mimeapps.list"),
              "[Default Applications]\n"
              "x-scheme-handler/http=org.fernhop.Fernhop.desktop;chromium.desktop;\n"
              "x-scheme-handler/https=org.fernhop.Fernhop.desktop;chromium.desktop;\n");
    session.entries.uninstall(ownID);
    EXPECT_EQ(handler(session, "GNOME"), "chromium");
}

TEST_F(Handlers, BehindAnAssociationAreThoseThatWouldFollow) {
    session.home.write(session.home.data() + "/applications/mimeinfo.cache",
                       "[MIME Cache]\nx-scheme-handler/https=org.fernhop.Fernhop.desktop;firefox.desktop;\n");
    EXPECT_EQ(session.services("GNOME").browserBehindAssociation(), "firefox");
    EXPECT_EQ(session.services("sway").browserBehindAssociation(), "firefox");
    ASSERT_TRUE(setBoth(session, "GNOME", ownID));
    EXPECT_EQ(session.services("GNOME").browserBehindAssociation(), std::nullopt);
}

TEST_F(Handlers, SurviveHostileLists) {
    session.writeConfig("mimeapps.list",
                        "[Default Applications]\nx-scheme-handler/https=\xff\xfe;;=;[;\\x\n");
    EXPECT_EQ(handler(session, "GNOME"), std::nullopt);
    session.writeConfig("mimeapps.list",
                        "[Default Applications]\nx-scheme-handler/https=firefox;.desktop;\n");
    EXPECT_EQ(handler(session, "GNOME"), std::nullopt);
}

// GLib ignores a list with one bad line, so the bad line has to go, but nothing of it may be lost.
TEST_F(Handlers, MendADamagedList) {
    session.writeConfig("mimeapps.list", "[Default Applications]\nx-scheme-handler/https=firefox.desktop\n"
                                         "<<<<<<< HEAD\nimage/png=gimp.desktop\n");
    EXPECT_EQ(handler(session, "GNOME"), std::nullopt);
    EXPECT_TRUE(session.services("GNOME").setDefaultHandlerForUrlScheme("https", ownID));
    EXPECT_EQ(session.readConfig("mimeapps.list"), "[Default Applications]\n"
                                                   "x-scheme-handler/https=org.fernhop.Fernhop.desktop\n"
                                                   "#<<<<<<< HEAD\nimage/png=gimp.desktop\n");
}

TEST_F(Handlers, AreNoLongerRemoved) {
    session.declareNothing();
    session.writeConfig(
        "mimeapps.list",
        "[Removed Associations]\nx-scheme-handler/https=a.desktop;org.fernhop.Fernhop.desktop;\n"
        "x-scheme-handler/http=org.fernhop.Fernhop.desktop;\n");
    EXPECT_TRUE(setBoth(session, "KDE", ownID));
    EXPECT_EQ(session.readConfig("mimeapps.list"),
              "[Removed Associations]\nx-scheme-handler/https=a.desktop;\n"
              "[Default Applications]\n"
              "x-scheme-handler/http=org.fernhop.Fernhop.desktop\n"
              "x-scheme-handler/https=org.fernhop.Fernhop.desktop\n");
}

TEST_F(Handlers, AreNotWrittenTwice) {
    ASSERT_TRUE(setBoth(session, "GNOME", ownID));
    struct stat before {};
    struct stat after {};
    stat(session.config("mimeapps.list").c_str(), &before);
    EXPECT_TRUE(setBoth(session, "GNOME", ownID));
    stat(session.config("mimeapps.list").c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(Handlers, OfOtherDesktopsStayUnlessTheyNameUs) {
    session.writeConfig("lxqt-mimeapps.list", Session::defaults("https", "firefox"));
    session.writeConfig("xfce-mimeapps.list", Session::defaults("https", ownID));
    ASSERT_TRUE(setBoth(session, "GNOME", ownID));
    EXPECT_EQ(session.readConfig("lxqt-mimeapps.list"), Session::defaults("https", "firefox"));
    ASSERT_TRUE(setBoth(session, "GNOME", "chromium"));
    EXPECT_EQ(session.readConfig("lxqt-mimeapps.list"), Session::defaults("https", "firefox"));
    EXPECT_EQ(session.readConfig("xfce-mimeapps.list"), Session::defaults("https", "chromium"));
}

TEST(MimeDefaults, KeepsWhatIsInvalidAsComments) {
    EXPECT_EQ(withInvalidLinesAsComments(
                  "stray=1\n\n[g]\na=1\nwhat is this\n[broken\nEncoding=KOI8-R\n=x\n# fine\nb=2\n"),
              "#stray=1\n\n[g]\na=1\n#what is this\n#[broken\n#Encoding=KOI8-R\n#=x\n# fine\nb=2\n");
}

TEST(MimeDefaults, LeavesAValidListAlone) {
    const std::string bytes = "# c\n\n[g]\r\n a = \xff\n";
    EXPECT_EQ(withInvalidLinesAsComments(bytes), bytes);
}

} // namespace
} // namespace fernhop::freedesktop
