#include "Session.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

class InKde : public testing::Test {
  protected:
    Session session;
};

TEST_F(InKde, BrowserApplicationCountsWhereNoDefaultIsSet) {
    session.declareNothing();
    session.writeConfig("kdeglobals", "[General]\nBrowserApplication=firefox.desktop\n");
    EXPECT_EQ(handler(session, "KDE"), "firefox");
    EXPECT_EQ(handler(session, "GNOME"), std::nullopt);
    session.writeConfig("mimeapps.list", Session::defaults("https", "chromium"));
    EXPECT_EQ(handler(session, "KDE"), "chromium");
}

TEST_F(InKde, BrowserApplicationMayBeACommandOrGone) {
    session.declareNothing();
    for (const auto *value : {"!firefox --new-window", "gone.desktop", ""}) {
        session.writeConfig("kdeglobals", std::string("[General]\nBrowserApplication=") + value + '\n');
        EXPECT_EQ(handler(session, "KDE"), std::nullopt);
    }
}

TEST_F(InKde, BrowserApplicationFollowsWhereItIsSet) {
    ASSERT_TRUE(setBoth(session, "KDE", ownID));
    EXPECT_EQ(session.readConfig("kdeglobals"), "(none)");
    session.writeConfig("kdeglobals",
                        "[Colors]\na=1\n\n[General]\nBrowserApplication[$e]=!firefox\nfont=x\n");
    EXPECT_TRUE(session.services("KDE").setDefaultHandlerForUrlScheme("http", ownID));
    EXPECT_NE(session.readConfig("kdeglobals").find("!firefox"), std::string::npos);
    EXPECT_TRUE(session.services("KDE").setDefaultHandlerForUrlScheme("https", ownID));
    EXPECT_EQ(session.readConfig("kdeglobals"),
              "[Colors]\na=1\n\n[General]\nfont=x\nBrowserApplication=org.fernhop.Fernhop.desktop\n");
    EXPECT_TRUE(setBoth(session, "GNOME", "firefox"));
    EXPECT_EQ(session.readConfig("kdeglobals"),
              "[Colors]\na=1\n\n[General]\nfont=x\nBrowserApplication=firefox.desktop\n");
    EXPECT_TRUE(setBoth(session, "GNOME", "chromium"));
    EXPECT_NE(session.readConfig("kdeglobals").find("=firefox.desktop"), std::string::npos);
}

TEST_F(InKde, ADeletedBrowserApplicationIsNone) {
    session.declareNothing();
    session.home.write(session.admin("kdeglobals"), "[General]\nBrowserApplication=firefox.desktop\n");
    EXPECT_EQ(handler(session, "KDE"), "firefox");
    session.writeConfig("kdeglobals", "[General]\nBrowserApplication[$d]\n");
    EXPECT_EQ(handler(session, "KDE"), std::nullopt);
}

TEST_F(InKde, ALockedBrowserApplicationDoesNotKeepTheDefault) {
    session.declareNothing();
    session.home.write(session.admin("kdeglobals"), "[General]\nBrowserApplication[$i]=firefox.desktop\n");
    session.writeConfig("kdeglobals", "[General]\nBrowserApplication=chromium.desktop\n");
    EXPECT_EQ(handler(session, "KDE"), "firefox");
    EXPECT_TRUE(setBoth(session, "KDE", ownID));
    EXPECT_EQ(handler(session, "KDE"), ownID);
}

class InXfce : public testing::Test {
  protected:
    Session session;

    void writeHelper(const std::string &folder, const std::string &id, const std::string &binaries) const {
        session.home.write(folder + "/xfce4/helpers/" + id + ".desktop",
                           "[Desktop Entry]\nType=X-XFCE-Helper\nX-XFCE-Category=WebBrowser\nName=B\n"
                           "X-XFCE-Binaries=" +
                               binaries +
                               ";\nX-XFCE-Commands=%B;\nX-XFCE-CommandsWithParameter=%B \"%s\";\n");
    }
    [[nodiscard]] std::string helper(const std::string &id) const {
        return readFile(session.home.data() + "/xfce4/helpers/" + id + ".desktop").value_or("(none)");
    }
};

TEST_F(InXfce, ThePreferredBrowserCounts) {
    writeHelper(session.home.systemData(), "firefox", "sh");
    session.writeConfig("xfce4/helpers.rc", "TerminalEmulator=xterm\nWebBrowser=firefox\n");
    EXPECT_EQ(handler(session, "XFCE"), "firefox");
    EXPECT_EQ(handler(session, "XFCE", "http"), "firefox");
    EXPECT_EQ(handler(session, "GNOME"), std::nullopt);
    session.writeConfig("mimeapps.list", Session::defaults("https", "chromium"));
    EXPECT_EQ(handler(session, "XFCE"), "firefox");
    EXPECT_EQ(handler(session, "GNOME"), "chromium");
    session.writeConfig("xfce4/helpers.rc", "WebBrowser=debian-sensible-browser\n");
    EXPECT_EQ(handler(session, "XFCE"), "chromium");
}

TEST_F(InXfce, LinksAreOursOnlyWhenEveryOpenerSaysSo) {
    writeHelper(session.home.systemData(), "firefox", "sh");
    ASSERT_TRUE(setBoth(session, "GNOME", ownID));
    session.writeConfig("xfce4/helpers.rc", "WebBrowser=firefox\n");
    EXPECT_EQ(handler(session, "XFCE"), "firefox");
    ASSERT_TRUE(setBoth(session, "XFCE", ownID));
    EXPECT_EQ(handler(session, "XFCE"), ownID);
    session.writeConfig("mimeapps.list", Session::defaults("https", "chromium"));
    EXPECT_EQ(handler(session, "XFCE"), "chromium");
    session.writeConfig("mimeapps.list", "");
    EXPECT_EQ(handler(session, "XFCE"), std::nullopt);
}

// Its opener then asks the user, and the link is not ours.
TEST_F(InXfce, NoPreferredBrowserIsNoHandler) {
    ASSERT_TRUE(setBoth(session, "GNOME", ownID));
    EXPECT_EQ(handler(session, "XFCE"), std::nullopt);
    ASSERT_TRUE(setBoth(session, "GNOME", "firefox"));
    EXPECT_EQ(handler(session, "XFCE"), "firefox");
}

TEST_F(InXfce, ACommandIsNoHandler) {
    ASSERT_TRUE(setBoth(session, "GNOME", ownID));
    session.home.write(session.admin("xfce4/helpers.rc"), "WebBrowser=debian-sensible-browser\n");
    EXPECT_EQ(handler(session, "XFCE"), std::nullopt);
    for (const auto *odd : {"", "../../x", "\xff"}) {
        session.writeConfig("xfce4/helpers.rc", std::string("WebBrowser=") + odd + '\n');
        EXPECT_NE(handler(session, "XFCE"), "firefox");
    }
}

TEST_F(InXfce, AHelperMayBeNamedLikeItsProgram) {
    session.entries.installBrowser("sh");
    writeHelper(session.home.systemData(), "custom", "no-such-browser;sh");
    session.writeConfig("xfce4/helpers.rc", "WebBrowser=custom\n");
    EXPECT_EQ(handler(session, "XFCE"), "sh");
}

TEST_F(InXfce, ItsOwnEntryStandsForThePreferredBrowser) {
    session.entries.installBrowser("xfce4-web-browser", "exo-open --launch WebBrowser %u");
    session.writeConfig("mimeapps.list", Session::defaults("https", "xfce4-web-browser"));
    EXPECT_EQ(handler(session, "XFCE"), std::nullopt);
    writeHelper(session.home.systemData(), "firefox", "sh");
    session.writeConfig("xfce4/helpers.rc", "WebBrowser=firefox\n");
    EXPECT_EQ(handler(session, "XFCE"), "firefox");
    EXPECT_EQ(handler(session, "GNOME"), "firefox");
    session.writeConfig("xfce4/helpers.rc", "WebBrowser=debian-sensible-browser\n");
    EXPECT_EQ(handler(session, "GNOME"), std::nullopt);
}

TEST_F(InXfce, SettingProvidesAHelper) {
    session.writeConfig("xfce4/helpers.rc",
                        "# mine\nWebBrowser=other\nWebBrowserDismissed=true\nMailReader=m\n");
    ASSERT_TRUE(setBoth(session, "XFCE", ownID));
    EXPECT_EQ(session.readConfig("xfce4/helpers.rc"),
              "# mine\nWebBrowser=org.fernhop.Fernhop\nMailReader=m\n");
    EXPECT_NE(helper(ownID).find("=\"/opt/org.fernhop.Fernhop\" \"%s\";"), std::string::npos);
}

TEST_F(InXfce, SettingKeepsAnExistingHelper) {
    writeHelper(session.home.systemData(), "firefox", "sh");
    EXPECT_TRUE(setBoth(session, "XFCE", "firefox"));
    EXPECT_EQ(helper("firefox"), "(none)");
}

TEST_F(InXfce, SettingReplacesAnUnusableHelper) {
    writeHelper(session.home.systemData(), "firefox", "no-such-browser");
    EXPECT_TRUE(setBoth(session, "XFCE", "firefox"));
    EXPECT_NE(helper("firefox").find("\"/opt/firefox\" \"%s\""), std::string::npos);
    session.entries.installBrowser("firefox", "/usr/bin/firefox %u");
    EXPECT_TRUE(setBoth(session, "XFCE", "firefox"));
    EXPECT_NE(helper("firefox").find("\"/usr/bin/firefox\" \"%s\""), std::string::npos);
}

TEST_F(InXfce, SettingNeverOverwritesTheUsersHelper) {
    writeHelper(session.home.data(), "firefox", "no-such-browser");
    const auto before = helper("firefox");
    EXPECT_FALSE(setBoth(session, "XFCE", "firefox"));
    EXPECT_EQ(helper("firefox"), before);
}

TEST_F(InXfce, HttpAloneLeavesThePreferredBrowser) {
    session.writeConfig("xfce4/helpers.rc", "WebBrowser=other\n");
    EXPECT_TRUE(session.services("XFCE").setDefaultHandlerForUrlScheme("http", ownID));
    EXPECT_EQ(session.readConfig("xfce4/helpers.rc"), "WebBrowser=other\n");
}

TEST_F(InXfce, GivingBackElsewhereReachesThePreferredBrowser) {
    ASSERT_TRUE(setBoth(session, "XFCE", ownID));
    session.entries.uninstall(ownID);
    EXPECT_TRUE(setBoth(session, "GNOME", "firefox"));
    EXPECT_EQ(session.readConfig("xfce4/helpers.rc"), "WebBrowser=firefox\n");
}

} // namespace
} // namespace fernhop::freedesktop
