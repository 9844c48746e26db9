#include "platform/linux/applications/InstalledDesktopEntries.h"
#include "platform/linux/defaulthandler/FreedesktopLaunchServices.h"
#include "support/KdeSession.h"
#include "support/PrivateBus.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <sstream>

namespace fernhop::freedesktop {
namespace {

namespace files = std::filesystem;
using support::Environment;
using support::operator+;

constexpr const char *ownID = "org.fernhop.Fernhop";

/// A program that opens links, in a session of a desktop.
struct Opener {
    std::string desktop;
    std::vector<std::string> command;
};

void PrintTo(const Opener &opener, std::ostream *out) {
    *out << opener.command.front() << " in " << opener.desktop;
}

std::vector<Opener> openers() {
    std::vector<Opener> all{{"XFCE", {"exo-open"}}, {"KDE", {"kde-open5"}}};
    for (const auto *desktop : {"GNOME", "KDE", "XFCE", "LXQt", "MATE", "X-Cinnamon", "X-Generic", "sway"}) {
        all.push_back({desktop, {"xdg-open"}});
        all.push_back({desktop, {"gio", "open"}});
    }
    return all;
}

std::string nameOf(const testing::TestParamInfo<Opener> &info) {
    auto name = info.param.command.front() + "In" + info.param.desktop;
    std::erase(name, '-');
    return name;
}

/// A private session with two browsers and Fernhop, each of which writes down the links that it gets.
class Openers : public testing::TestWithParam<Opener> {
  protected:
    static void SetUpTestSuite() {
        if (!support::PrivateDisplay::isAvailable())
            return;
        displayHome = std::make_unique<support::TemporaryHome>();
        display = std::make_unique<support::PrivateDisplay>(*displayHome);
    }
    static void TearDownTestSuite() {
        display.reset();
        displayHome.reset();
    }

    void SetUp() override {
        const auto &program = GetParam().command.front();
        if (!display || !support::isInstalled(program))
            GTEST_SKIP() << program << ", Xvfb or openbox is not installed";
        if (GetParam().desktop == "XFCE" && !support::isInstalled("xfce4-mime-helper"))
            GTEST_SKIP() << "xfce4-settings is not installed";
        if (GetParam().desktop == "KDE" && !support::isKdeInstalled())
            GTEST_SKIP() << "kde-cli-tools is not installed";
        if (GetParam().desktop == "LXQt" && program == "xdg-open" && !support::isInstalled("qtxdg-mat"))
            GTEST_SKIP() << "qtxdg-tools is not installed";
        support::writeKdeSystem(home);
        for (const auto *id : {ownID, "browser-a", "browser-b"})
            installBrowser(id);
    }

    void installBrowser(const std::string &id, const std::string &more = {}) const {
        const auto program = home.root() + "/bin/" + id;
        home.writeProgram(program, "#!/bin/sh\necho \"" + id + " $*\" >>'" + record() + "'\n");
        home.writeDesktopEntry(id, "[Desktop Entry]\nType=Application\nName=" + id + "\nExec=" + program +
                                       " %U\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n" +
                                       more);
    }

    /// What an earlier life of this user may have left behind, all of it in our way.
    void writeContrarySettings() const {
        home.write(home.root() + "/etc/xfce4/helpers.rc", "WebBrowser=debian-sensible-browser\n");
        home.write(home.config() + "/kdeglobals", "[General]\nBrowserApplication=browser-a.desktop\n");
        for (const auto *desktop : {"gnome", "kde", "xfce", "lxqt", "mate", "sway"})
            home.write(home.config() + '/' + desktop + "-mimeapps.list",
                       "[Default Applications]\nx-scheme-handler/http=browser-a.desktop\n"
                       "x-scheme-handler/https=browser-a.desktop\n");
    }

    /// As the user does in Xfce's settings.
    void preferInXfce(const std::string &id) const {
        const auto command = home.root() + "/bin/" + id;
        home.write(home.config() + "/xfce4/helpers.rc", "WebBrowser=" + id + '\n');
        home.write(home.data() + "/xfce4/helpers/" + id + ".desktop",
                   "[Desktop Entry]\nType=X-XFCE-Helper\nX-XFCE-Category=WebBrowser\nName=" + id +
                       "\nX-XFCE-Commands=" + command + ";\nX-XFCE-CommandsWithParameter=" + command +
                       " \"%s\";\n");
    }

    [[nodiscard]] std::string record() const { return home.root() + "/record"; }

    [[nodiscard]] Environment session() const {
        Environment variables{{"XDG_CURRENT_DESKTOP", GetParam().desktop}, {"NO_AT_BRIDGE", "1"}};
        if (GetParam().desktop == "KDE")
            variables = variables + support::kdeSession();
        return home.environment() + bus.environment() + display->environment() + variables;
    }

    /// Opens a link; who got it.
    std::string whoGets(const std::string &link) const {
        files::remove(record());
        auto command = GetParam().command;
        command.push_back(link);
        support::ChildProcess opener({command, session(), home.root() + "/output"});
        const auto recorded = [this] {
            std::ifstream file(record());
            std::ostringstream text;
            text << file.rdbuf();
            return text.str();
        };
        if (!support::waitUntil([&] { return recorded().ends_with('\n'); }))
            return "nobody";
        opener.wait();
        const auto line = recorded();
        const auto end = line.find(' ');
        return line.substr(end + 1) == link + '\n' ? line.substr(0, end) : line;
    }

    [[nodiscard]] std::optional<std::string> handler() const {
        const support::ScopedEnvironment environment(
            home.environment() + support::Environment{{"XDG_CURRENT_DESKTOP", GetParam().desktop}});
        const InstalledDesktopEntries entries(applicationPlaces(freedesktop::Environment::current()));
        const FreedesktopLaunchServices services(XdgSession::of(freedesktop::Environment::current()), entries,
                                                 ownID);
        return services.copyDefaultHandlerForUrlScheme("https");
    }

    bool setHandler(const std::string &id) const {
        const support::ScopedEnvironment environment(
            home.environment() + support::Environment{{"XDG_CURRENT_DESKTOP", GetParam().desktop}});
        const InstalledDesktopEntries entries(applicationPlaces(freedesktop::Environment::current()));
        FreedesktopLaunchServices services(XdgSession::of(freedesktop::Environment::current()), entries,
                                           ownID);
        const bool http = services.setDefaultHandlerForUrlScheme("http", id);
        return services.setDefaultHandlerForUrlScheme("https", id) && http;
    }

    support::TemporaryHome home;
    support::PrivateBus bus{home};

  private:
    static inline std::unique_ptr<support::TemporaryHome> displayHome;
    static inline std::unique_ptr<support::PrivateDisplay> display;
};

INSTANTIATE_TEST_SUITE_P(Handlers, Openers, testing::ValuesIn(openers()), nameOf);

TEST_P(Openers, FollowTheHandlerThatWasSet) {
    for (const auto *id : {"browser-b", ownID, "browser-a"}) {
        ASSERT_TRUE(setHandler(id));
        EXPECT_EQ(handler(), id);
        EXPECT_EQ(whoGets("https://example.org/1?a=b&c=d#e"), id);
        EXPECT_EQ(whoGets("http://example.org/2"), id);
    }
}

TEST_P(Openers, FollowItAgainstContrarySettings) {
    writeContrarySettings();
    ASSERT_TRUE(setHandler(ownID));
    EXPECT_EQ(whoGets("https://example.org/1"), ownID);
    EXPECT_EQ(whoGets("http://example.org/2"), ownID);
    ASSERT_TRUE(setHandler("browser-b"));
    EXPECT_EQ(whoGets("https://example.org/3"), "browser-b");
    EXPECT_EQ(whoGets("http://example.org/4"), "browser-b");
}

TEST_P(Openers, FollowAssociationsWhereNothingIsSet) {
    if (GetParam().desktop == "XFCE" && GetParam().command.front() != "gio")
        GTEST_SKIP() << "Xfce's opener asks which browser to use";
    // KDE goes by the preference that an entry has of itself, the others by the cache.
    installBrowser("browser-b", "InitialPreference=9\n");
    home.write(home.applications() + "/mimeinfo.cache",
               "[MIME Cache]\nx-scheme-handler/https=browser-b.desktop;browser-a.desktop;" +
                   std::string(ownID) +
                   ".desktop;\nx-scheme-handler/http=browser-b.desktop;browser-a.desktop;\n");
    EXPECT_EQ(handler(), "browser-b");
    EXPECT_EQ(whoGets("https://example.org/1"), "browser-b");
    EXPECT_EQ(whoGets("http://example.org/2"), "browser-b");
    if (GetParam().desktop != "KDE")
        return;
    home.write(home.config() + "/kdeglobals", "[General]\nBrowserApplication=browser-a.desktop\n");
    const auto read = handler();
    EXPECT_EQ(whoGets("https://example.org/3"), GetParam().command.front() == "gio" ? "browser-b" : read);
}

TEST_P(Openers, GoWhereTheHandlerIsRead) {
    auto list = GetParam().desktop + "-mimeapps.list";
    std::transform(list.begin(), list.end(), list.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    const std::vector<std::pair<std::string, std::string>> settings{
        {home.root() + "/etc/mimeapps.list", ownID},
        {home.config() + "/mimeapps.list", "browser-a"},
        {home.config() + '/' + list, "browser-b"}};
    for (const auto &[path, id] : settings) {
        home.write(path, "[Default Applications]\nx-scheme-handler/https=" + id + ".desktop\n");
        if (GetParam().desktop == "XFCE")
            preferInXfce(id);
        EXPECT_EQ(handler(), id);
        EXPECT_EQ(whoGets("https://example.org/" + id), id);
    }
}

} // namespace
} // namespace fernhop::freedesktop
