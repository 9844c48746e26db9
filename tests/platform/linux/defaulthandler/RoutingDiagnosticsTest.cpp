#include "Session.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

namespace fernhop::freedesktop {
namespace {

class RoutingDiagnosticsTest : public testing::Test {
  protected:
    Session session;

    void routeIn(const std::string &desktop) const {
        auto services = session.services(desktop);
        services.setDefaultHandlerForUrlScheme("http", ownID);
        services.setDefaultHandlerForUrlScheme("https", ownID);
    }

    /// Whether there is exactly one problem, and its text has `part`.
    static testing::AssertionResult isOnly(const std::vector<std::string> &problems,
                                           const std::string &part) {
        if (problems.size() == 1 && problems.front().find(part) != std::string::npos)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(problems);
    }
};

TEST_F(RoutingDiagnosticsTest, HasNoProblemWhereAllIsSetOrNothingIs) {
    for (const auto *desktop : {"GNOME", "KDE", "XFCE", "LXQt", ""}) {
        EXPECT_TRUE(session.problems(desktop).empty());
        routeIn(desktop);
        EXPECT_TRUE(session.problems(desktop).empty()) << testing::PrintToString(session.problems(desktop));
        auto services = session.services(desktop);
        services.setDefaultHandlerForUrlScheme("http", "firefox");
        services.setDefaultHandlerForUrlScheme("https", "firefox");
        EXPECT_TRUE(session.problems(desktop).empty());
    }
}

TEST_F(RoutingDiagnosticsTest, NeedsOurDesktopEntry) {
    session.entries.uninstall(ownID);
    EXPECT_TRUE(isOnly(session.problems("GNOME"), "org.fernhop.Fernhop.desktop is not installed"));
}

TEST_F(RoutingDiagnosticsTest, NeedsBothSchemesInOurDesktopEntry) {
    session.entries.uninstall(ownID);
    session.entries.install(ownID).schemes = {"http"};
    EXPECT_TRUE(isOnly(session.problems("GNOME"), "does not declare x-scheme-handler/https"));
}

TEST_F(RoutingDiagnosticsTest, NamesBrowsersThatWouldInterpretLinks) {
    session.entries.unsafe.push_back(session.entries.install("shell"));
    session.entries.uninstall("shell");
    EXPECT_TRUE(isOnly(session.problems("GNOME"),
                       "shell.desktop is not used as a browser: its Exec line would let a shell or another "
                       "interpreter run what stands in a link."));
    EXPECT_NE(browserRefusal(session.entries, "shell"), std::nullopt);
    EXPECT_EQ(browserRefusal(session.entries, "firefox"), std::nullopt);
    EXPECT_EQ(browserRefusal(session.entries, "not.there"), std::nullopt);

    session.entries.installBrowser("opener", "xdg-open %u");
    EXPECT_EQ(browserRefusal(session.entries, "opener"),
              "it only passes links on to the default browser: they would come back.");
    session.entries.installBrowser("org.fernhop.Fernhop", "fernhop-open %U");
    EXPECT_EQ(browserRefusal(session.entries, "org.fernhop.Fernhop"), std::nullopt);
}

TEST_F(RoutingDiagnosticsTest, NamesAListWithMoreBrowsersThanAreLookedFor) {
    std::string many;
    for (int number = 0; number < 5000; ++number)
        many += "missing" + std::to_string(number) + ".desktop;";
    session.writeConfig("mimeapps.list", "[Default Applications]\nx-scheme-handler/https=" + many + ownID +
                                             ".desktop\nx-scheme-handler/http=" + ownID + ".desktop\n");
    const auto problems = session.problems("GNOME");
    EXPECT_EQ(std::ranges::count_if(problems,
                                    [](const auto &problem) {
                                        return problem.find("names more than 100 applications") !=
                                               std::string::npos;
                                    }),
              1)
        << testing::PrintToString(problems);
}

TEST_F(RoutingDiagnosticsTest, NamesADifferenceOfTheSchemes) {
    routeIn("GNOME");
    session.services("GNOME").setDefaultHandlerForUrlScheme("http", "firefox");
    EXPECT_TRUE(
        isOnly(session.problems("GNOME"), "http links go to firefox, as " + session.config("mimeapps.list")));
    session.writeConfig("mimeapps.list", Session::defaults("http", ownID));
    EXPECT_TRUE(isOnly(session.problems("GNOME"), "No handler is set for https links"));
}

TEST_F(RoutingDiagnosticsTest, NamesAListThatOutranksOurs) {
    routeIn("GNOME");
    session.writeConfig("gnome-mimeapps.list", Session::defaults("https", "firefox"));
    EXPECT_TRUE(isOnly(session.problems("GNOME"),
                       "https links go to firefox, as " + session.config("gnome-mimeapps.list") + " says"));
    EXPECT_TRUE(session.problems("KDE").empty());
}

TEST_F(RoutingDiagnosticsTest, NamesADamagedList) {
    session.writeConfig("mimeapps.list", "[Default Applications]\nwhat\n");
    EXPECT_TRUE(isOnly(session.problems("GNOME"), "mimeapps.list is damaged"));
}

TEST_F(RoutingDiagnosticsTest, NamesAListThatCannotBeWritten) {
    ASSERT_EQ(mkfifo(session.config("mimeapps.list").c_str(), 0600), 0);
    EXPECT_TRUE(isOnly(session.problems("GNOME"), "mimeapps.list cannot be written"));
}

TEST_F(RoutingDiagnosticsTest, NamesXfcesPreferredBrowser) {
    routeIn("GNOME");
    EXPECT_TRUE(isOnly(session.problems("XFCE"), "helpers.rc) is not set"));
    session.home.write(session.admin("xfce4/helpers.rc"), "WebBrowser=debian-sensible-browser\n");
    EXPECT_TRUE(isOnly(session.problems("XFCE"), "is debian-sensible-browser"));
    EXPECT_TRUE(session.problems("GNOME").empty());
    session.writeConfig("xfce4/helpers.rc", std::string("WebBrowser=") + ownID + '\n');
    EXPECT_TRUE(isOnly(session.problems("XFCE"), "helper file is missing"));
}

TEST_F(RoutingDiagnosticsTest, NamesKdesBrowserApplication) {
    routeIn("KDE");
    session.writeConfig("kdeglobals", "[General]\nBrowserApplication=!firefox\n");
    EXPECT_TRUE(isOnly(session.problems("KDE"), "BrowserApplication in kdeglobals is !firefox"));
    EXPECT_TRUE(session.problems("GNOME").empty());
    session.home.write(session.admin("kdeglobals"), "[General][$i]\nBrowserApplication=x.desktop\n");
    EXPECT_TRUE(isOnly(session.problems("KDE"), "The administrator has locked it"));
}

TEST_F(RoutingDiagnosticsTest, SaysWhyLinksComeWhereNothingIsSet) {
    session.home.write(session.home.data() + "/applications/mimeinfo.cache",
                       "[MIME Cache]\nx-scheme-handler/https=org.fernhop.Fernhop.desktop;\n"
                       "x-scheme-handler/http=org.fernhop.Fernhop.desktop;\n");
    const auto problems = session.problems("GNOME");
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_NE(problems[0].find("No handler is set for https links. They go to Fernhop because"),
              std::string::npos);
    EXPECT_NE(problems[0].find("mimeinfo.cache names it first"), std::string::npos);
}

// xdg-open takes only the first of a list in a session without a desktop.
TEST_F(RoutingDiagnosticsTest, NamesOtherOpenersThatGoElsewhere) {
    session.writeConfig("mimeapps.list",
                        "[Default Applications]\nx-scheme-handler/https=gone.desktop;firefox.desktop;\n"
                        "x-scheme-handler/http=org.fernhop.Fernhop.desktop\n");
    session.home.write(session.home.data() + "/applications/mimeinfo.cache",
                       "[MIME Cache]\nx-scheme-handler/https=org.fernhop.Fernhop.desktop;\n");
    const auto problems = session.problems("sway");
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_NE(problems[1].find("GTK applications and portals open https links in firefox, as"),
              std::string::npos);
}

TEST_F(RoutingDiagnosticsTest, NamesTheBrowserVariable) {
    EXPECT_TRUE(isOnly(session.problems("GNOME", "firefox"), "BROWSER is firefox"));
    EXPECT_TRUE(session.problems("GNOME", "").empty());
    EXPECT_TRUE(session.problems("GNOME", "/usr/bin/fernhop-open").empty());
}

} // namespace
} // namespace fernhop::freedesktop
