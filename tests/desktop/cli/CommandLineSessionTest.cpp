#include "desktop/links/LinkSession.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <signal.h>

#include <filesystem>

namespace fernhop::desktoptest {
namespace {

using nlohmann::json;
using Words = std::vector<std::string>;

/// Where commands find their Fernhop.
enum class Side { resident, busOnly, noBus };

/// The real program in a session of its own, with one browser ("web") and one source application ("editor").
class CommandLineSession : public testing::TestWithParam<Side> {
  protected:
    CommandLineSession() {
        session.home.writeDesktopEntry("editor",
                                       "[Desktop Entry]\nType=Application\nName=Editor\nExec=true\n");
        if (GetParam() != Side::noBus)
            session.startBus();
        if (GetParam() == Side::resident)
            session.startFernhop();
    }
    ~CommandLineSession() override {
        if (session.bus)
            session.killResident(SIGKILL);
    }

    json runJson(const Words &words) {
        EXPECT_EQ(session.fernhop(words), 0) << session.output();
        return json::parse(session.output());
    }

    int shell(const std::string &script) {
        return session.run(
            {"bash", "-c", "fernhop() { " + session.program("fernhop") + " \"$@\"; }; " + script});
    }

    [[nodiscard]] bool runs() const { return GetParam() == Side::resident; }

    LinkSession session;
};

INSTANTIATE_TEST_SUITE_P(, CommandLineSession, testing::Values(Side::resident, Side::busOnly, Side::noBus),
                         [](const auto &tested) {
                             return tested.param == Side::resident  ? "Resident"
                                    : tested.param == Side::busOnly ? "BusOnly"
                                                                    : "NoBus";
                         });

TEST_P(CommandLineSession, statusTellsTheState) {
    const auto status = runJson({"status", "--json"});
    EXPECT_EQ(status["running"], runs());
    EXPECT_EQ(status["routing"], true);
    EXPECT_EQ(status["httpHandler"], "org.fernhop.Fernhop");
    EXPECT_EQ(status["httpsHandler"], "org.fernhop.Fernhop");
    EXPECT_EQ(status["fallback"], nullptr);
    EXPECT_EQ(status["restoreOnQuit"], false);
    EXPECT_TRUE(status["source"].is_null() || status["source"].is_string());
    EXPECT_TRUE(status["sourceProvider"].is_string());
    EXPECT_TRUE(status["problems"].is_array());
}

TEST_P(CommandLineSession, listsWhatIsInstalled) {
    const auto browsers = runJson({"browsers", "--json"});
    ASSERT_EQ(browsers.size(), 1U);
    EXPECT_EQ(browsers[0]["bundleID"], "web");
    EXPECT_EQ(browsers[0]["appURL"], "file://" + session.home.applications() + "/web.desktop");
    const auto apps = runJson({"apps", "--json"});
    ASSERT_EQ(apps.size(), 2U);
    EXPECT_EQ(apps[0]["bundleID"], "editor");
    EXPECT_EQ(apps[0]["urlSchemes"], json::array());
}

TEST_P(CommandLineSession, rulesGoInAndOut) {
    ASSERT_EQ(session.fernhop({"url-rules", "add", "*.pdf", "web"}), 0) << session.output();
    ASSERT_EQ(session.fernhop({"app-rules", "set", "Editor", "web"}), 0) << session.output();
    const auto rules = runJson({"url-rules", "list", "--json"});
    ASSERT_EQ(rules.size(), 1U);
    EXPECT_EQ(rules[0]["pattern"], "*.pdf");
    EXPECT_EQ(rules[0]["browserBundleID"], "web");
    const auto id = rules[0]["id"].get<std::string>();

    const auto told = runJson({"explain", "--json", "--source", "editor", "https://a.example/b.pdf"});
    EXPECT_EQ(told["because"], "urlRule");
    EXPECT_EQ(told["urlRule"]["id"], id);
    EXPECT_EQ(told["appRule"], "web");
    EXPECT_EQ(told["target"]["bundleID"], "web");

    EXPECT_EQ(session.fernhop({"url-rules", "edit", id, "--", "-x-", "web"}), 0) << session.output();
    EXPECT_EQ(runJson({"url-rules", "list", "--json"})[0]["pattern"], "-x-");
    EXPECT_EQ(session.fernhop({"url-rules", "remove", id}), 0) << session.output();
    EXPECT_EQ(session.fernhop({"url-rules", "remove", id}), 1);
    EXPECT_EQ(session.fernhop({"app-rules", "remove", "editor"}), 0) << session.output();
    EXPECT_EQ(runJson({"app-rules", "list", "--json"}), json::array());
}

TEST_P(CommandLineSession, switchesTheDefaultBrowser) {
    EXPECT_EQ(session.fernhop({"default", "web"}), 0) << session.output();
    EXPECT_EQ(runJson({"status", "--json"})["httpsHandler"], "web");
    EXPECT_EQ(session.fernhop({"routing", "on"}), 0) << session.output();
    EXPECT_EQ(runJson({"status", "--json"})["routing"], true);
    EXPECT_EQ(session.fernhop({"routing", "off"}), 0) << session.output();
    const auto status = runJson({"status", "--json"});
    EXPECT_EQ(status["routing"], false);
    EXPECT_EQ(status["httpHandler"], "web");
    EXPECT_EQ(status["fallback"], "web");
    EXPECT_EQ(session.fernhop({"restore-on-quit", "on"}), 0) << session.output();
    EXPECT_EQ(runJson({"status", "--json"})["restoreOnQuit"], true);
}

TEST_P(CommandLineSession, settingsTravelAsADocument) {
    ASSERT_EQ(session.fernhop({"url-rules", "add", "浏览", "web"}), 0) << session.output();
    const auto file = session.home.root() + "/settings.json";
    ASSERT_EQ(session.fernhop({"export", file}), 0) << session.output();
    const auto exported = runJson({"export"});
    EXPECT_EQ(exported["urlRules"][0]["pattern"], "浏览");
    ASSERT_EQ(session.fernhop({"url-rules", "remove", exported["urlRules"][0]["id"]}), 0) << session.output();
    ASSERT_EQ(session.fernhop({"import", file}), 0) << session.output();
    EXPECT_EQ(runJson({"export"}), exported);
    session.home.write(file, "{\"version\":1}");
    EXPECT_EQ(session.fernhop({"import", file}), 1);
    EXPECT_EQ(runJson({"export"}), exported);
    EXPECT_EQ(shell("fernhop export | fernhop import -"), 0) << session.output();
}

TEST_P(CommandLineSession, hasItsExitStatuses) {
    EXPECT_EQ(session.fernhop({"--help"}), 0);
    EXPECT_EQ(session.fernhop({"--version"}), 0);
    EXPECT_EQ(session.fernhop({"--wrong"}), 2);
    EXPECT_EQ(session.fernhop({"url-rules", "add", " ", "web"}), 2);
    EXPECT_EQ(session.fernhop({"url-rules", "add", "a", "nothing"}), 1);
    EXPECT_EQ(session.fernhop({"match", "*.pdf", "https://a/b.pdf"}), 0);
    EXPECT_EQ(session.fernhop({"match", "*.pdf", "https://a/"}), 1);
    EXPECT_EQ(session.fernhop({"explain", ""}), 2);
    EXPECT_EQ(session.fernhop({"explain", "https://a/\xff"}), 0) << session.output();
}

TEST_P(CommandLineSession, complaintsGoToStandardError) {
    EXPECT_EQ(shell("fernhop --wrong 2>/dev/null"), 2);
    EXPECT_EQ(session.output(), "");
    EXPECT_EQ(shell("fernhop url-rules remove nothing 2>/dev/null"), 1);
    EXPECT_EQ(session.output(), "");
}

TEST_P(CommandLineSession, matchAnswersLineByLine) {
    EXPECT_EQ(
        shell(
            "coproc fernhop match '*.pdf'; echo https://a/b.pdf >&${COPROC[1]}; read answer <&${COPROC[0]}; "
            "echo $answer; echo https://a/ >&${COPROC[1]}; read answer <&${COPROC[0]}; echo $answer"),
        0);
    EXPECT_EQ(session.output(), "yes\nno\n");
}

TEST_P(CommandLineSession, aReaderThatLeavesIsNoReasonToComplain) {
    EXPECT_EQ(shell("yes https://a/ | fernhop match a | head -n 2"), 0);
    EXPECT_EQ(session.output(), "yes\nyes\n");
    EXPECT_EQ(shell("trap '' PIPE; yes https://a/ 2>/dev/null | fernhop match a | head -n 2"), 0);
    EXPECT_EQ(session.output(), "yes\nyes\n");
    EXPECT_EQ(shell("for command in status apps export --help; do fernhop $command | true; done"), 0);
    EXPECT_EQ(session.output(), "");
}

TEST_P(CommandLineSession, aFullDiskIsAReasonToComplain) {
    EXPECT_EQ(shell("fernhop status >/dev/full"), 1);
    EXPECT_NE(session.output(), "");
    EXPECT_EQ(session.fernhop({"export", "/dev/full"}), 1);
}

TEST_P(CommandLineSession, settingsThatCannotBeWrittenAreAReasonToo) {
    // Permissions would not keep the superuser away; a file where the folder should be does.
    std::filesystem::remove_all(session.home.config() + "/fernhop");
    session.home.write(session.home.config() + "/fernhop", "in the way");
    EXPECT_EQ(session.fernhop({"url-rules", "add", "a", "web"}), 1);
    EXPECT_NE(session.output().find("could not be stored"), std::string::npos) << session.output();
}

TEST_P(CommandLineSession, quitEndsTheRunningFernhop) {
    EXPECT_EQ(session.fernhop({"quit"}), 0) << session.output();
    if (runs()) {
        EXPECT_EQ(session.resident->wait(), 0);
        EXPECT_EQ(session.output(), "");
    } else {
        EXPECT_EQ(session.output(), "Fernhop is not running.\n");
    }
}

TEST_P(CommandLineSession, refreshFindsNewBrowsers) {
    session.home.writeDesktopEntry("other", "[Desktop Entry]\nType=Application\nName=Other\nExec=true %u\n"
                                            "MimeType=x-scheme-handler/http;\n");
    EXPECT_EQ(session.fernhop({"refresh"}), 0) << session.output();
    EXPECT_EQ(runJson({"browsers", "--json"}).size(), 2U);
}

TEST_P(CommandLineSession, tellsWhereLinksGoWhileRoutingIsOff) {
    ASSERT_EQ(session.fernhop({"default", "web"}), 0) << session.output();
    auto told = runJson({"explain", "--json", "--source", "Editor", "https://a.example/"});
    EXPECT_EQ(told["routing"], false);
    EXPECT_EQ(told["handler"], "web");
    EXPECT_EQ(told["source"], "editor");
    EXPECT_EQ(session.fernhop({"explain", "https://a.example/"}), 0);
    EXPECT_EQ(session.output().find("App Routing is off: the system opens the link in "), 0U)
        << session.output();
    EXPECT_EQ(session.fernhop({"explain", "--source", "gone", "https://a.example/"}), 1) << session.output();
    EXPECT_EQ(session.fernhop({"explain", "notaurl"}), 2) << session.output();
}

TEST_P(CommandLineSession, callsNoOpenerUninstalled) {
    session.home.writeDesktopEntry("opener", "[Desktop Entry]\nType=Application\nName=Web Browser\n"
                                             "Exec=exo-open --launch WebBrowser %u\n"
                                             "MimeType=x-scheme-handler/http;\n");
    EXPECT_EQ(session.fernhop({"app-rules", "set", "editor", "opener"}), 1);
    EXPECT_NE(session.output().find("it only passes links on"), std::string::npos) << session.output();
}

/// Lists in a session of a certain desktop and language.
class Lists : public testing::Test {
  protected:
    using Variables = support::Environment;

    /// The identifiers that a command lists with these variables, and no others of a language.
    Words list(const std::string &command, const Variables &variables) {
        const Variables none{{"LC_ALL", {}}, {"LC_COLLATE", {}}, {"LC_CTYPE", {}}, {"LANG", {}}};
        EXPECT_EQ(session.run({session.program("fernhop"), command, "--json"}, none + variables), 0);
        Words identifiers;
        for (const auto &entry : json::parse(session.output()))
            identifiers.push_back(entry["bundleID"]);
        return identifiers;
    }

    void install(const std::string &id, const std::string &name, const std::string &keys = {}) {
        session.home.writeDesktopEntry(id, "[Desktop Entry]\nType=Application\nExec=true %u\nName=" + name +
                                               "\nMimeType=x-scheme-handler/http;\n" + keys);
    }

    LinkSession session;
};

TEST_F(Lists, haveNothingThatIsForAnotherDesktop) {
    install("a", "A", "OnlyShowIn=GNOME;\n");
    install("b", "B", "NotShowIn=GNOME;\n");
    const Variables gnome{{"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"}};
    const Variables kde{{"XDG_CURRENT_DESKTOP", "KDE"}};
    for (const std::string command : {"apps", "browsers"}) {
        EXPECT_EQ(list(command, gnome), (Words{"a", "web"})) << command;
        EXPECT_EQ(list(command, kde), (Words{"b", "web"})) << command;
    }
}

TEST_F(Lists, areInTheOrderThatTheUserWants) {
    install("a", "Ärger");
    install("z", "Zeder");
    EXPECT_EQ(list("apps", {{"LANG", "de_DE.UTF-8"}}), (Words{"a", "web", "z"}));
    EXPECT_EQ(list("apps", {{"LANG", "sv_SE.UTF-8"}}), (Words{"web", "z", "a"}));
    EXPECT_EQ(list("apps", {{"LANG", "de_DE.UTF-8"}, {"LC_COLLATE", "sv_SE.UTF-8"}}),
              (Words{"web", "z", "a"}));
    EXPECT_EQ(list("apps", {{"LC_COLLATE", "de_DE.UTF-8"}, {"LC_CTYPE", "sv_SE.UTF-8"}}),
              (Words{"a", "web", "z"}));
    EXPECT_EQ(list("apps", {{"LC_COLLATE", "sv_SE.UTF-8"}, {"LC_ALL", "de_DE.UTF-8"}}),
              (Words{"a", "web", "z"}));
}

TEST_F(Lists, keepAnEmptyName) {
    install("empty", "");
    ASSERT_EQ(session.fernhop({"apps", "--json"}), 0);
    const auto apps = json::parse(session.output());
    ASSERT_EQ(apps.size(), 2U);
    EXPECT_EQ(apps[0]["bundleID"], "empty");
    EXPECT_EQ(apps[0]["name"], "");
}

class Opening : public CommandLineSession {};
INSTANTIATE_TEST_SUITE_P(, Opening, testing::Values(Side::resident, Side::busOnly), [](const auto &tested) {
    return tested.param == Side::resident ? "Resident" : "BusOnly";
});

TEST_P(Opening, deliversLinksInTheirOrder) {
    const Words links{"https://a/%F0", "https://b/$(x)|&;", "https://c/--help"};
    Words words = links;
    words.insert(words.begin(), "open");
    EXPECT_EQ(session.fernhop(words), 0) << session.output();
    EXPECT_EQ(session.opened(3), (Words{"https://a/%F0", "https://b/$(x)%7C&;", "https://c/--help"}));
}

TEST_P(Opening, tellsWhatIsNoLink) {
    EXPECT_EQ(session.fernhop({"open", "", "https://a/"}), 1);
    EXPECT_NE(session.output().find("is not a URL"), std::string::npos) << session.output();
    EXPECT_EQ(session.opened(1), Words{"https://a/"});
}

} // namespace
} // namespace fernhop::desktoptest
