// Everything that people do with Fernhop, by its icon in the tray alone: clicks and keys go in, and what
// comes of them is looked for in the settings file, in the desktop's default browser, and in the browsers.

#include "PanelSession.h"
#include "TrayMenu.h"
#include "platform/linux/source/XTestClient.h"
#include "support/Folders.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>

namespace fernhop::desktoptest {
namespace {

using nlohmann::json;
using support::waitUntil;
using Links = std::vector<std::string>;
using Titles = TrayMenu::Titles;

constexpr const char *mail = "org.example.Mail";
constexpr const char *chat = "org.example.Chat";

/// Prints a settings file as JSON, read by nobody that Fernhop knows.
constexpr const char *readSettings = "import json, plistlib, sys\n"
                                     "settings = plistlib.load(open(sys.argv[1], 'rb'))\n"
                                     "settings['urlRules'] = json.loads(settings.get('urlRules', b'[]'))\n"
                                     "print(json.dumps(settings))\n";

class IconAlone : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = PanelSession::missing(); !missing.empty())
            GTEST_SKIP() << "needs " << missing;
        session.emplace();
        other.emplace(session->home, "other");
        session->home.writeDesktopEntry("other", other->desktopEntry());
        session->home.writeDesktopEntry(mail, "[Desktop Entry]\nType=Application\nName=Mail_1\nExec=true\n");
        session->home.writeDesktopEntry(chat, "[Desktop Entry]\nType=Application\nName=Chat\nExec=true\n");
        session->startFernhop();
        session->startPanel();
        menu.emplace(*session);
    }

    /// What a failed test looked like at its end is worth a thousand words.
    void TearDown() override {
        if (!session || !HasFailure())
            return;
        const std::string picture = support::buildFolder() + "/tests/desktop/tray/failure.png";
        if (session->run({"import", "-silent", "-window", "root", picture}) == 0)
            std::cerr << "The screen: " << picture << "\n";
        std::cerr << "Fernhop:\n"
                  << session->log() << "The panel:\n"
                  << contentsOf(session->home.root() + "/panel");
    }

    [[nodiscard]] json settings() {
        const auto file = session->home.config() + "/fernhop/org.fernhop.Fernhop.plist";
        if (!std::filesystem::exists(file))
            return json::object();
        EXPECT_EQ(session->run({"python3", "-c", readSettings, file}), 0) << session->output();
        return json::parse(session->output(), nullptr, false);
    }
    [[nodiscard]] bool settingBecomes(const char *name, const json &value) {
        return waitUntil([&] { return settings().value(name, json()) == value; });
    }
    [[nodiscard]] bool handlerBecomes(const std::string &entry) {
        return waitUntil([&] { return session->defaultHandler() == entry; });
    }

    /// Waits until a dialog has the keyboard, as it must have when it was asked for in the tray.
    [[nodiscard]] bool dialogOpens(const std::string &title) {
        return waitUntil([&] {
            return session->input({"getactivewindow", "getwindowname"}) == 0 &&
                   session->output() == title + "\n";
        });
    }
    void type(const std::string &text) { ASSERT_EQ(session->input({"type", text}), 0); }
    void press(std::vector<std::string> keys) {
        keys.insert(keys.begin(), "key");
        ASSERT_EQ(session->input(keys), 0);
    }

    void openLink(const std::string &link) {
        ASSERT_EQ(session->run({"gio", "open", link}), 0) << session->output();
    }
    [[nodiscard]] Links linksOf(const support::RecordingBrowser &browser, std::size_t count) {
        (void)waitUntil([&] { return browser.links().size() >= count; });
        return browser.links();
    }
    [[nodiscard]] bool sourceBecomes(const char *id) {
        return waitUntil([&] {
            (void)session->fernhop({"status", "--json"});
            return json::parse(session->output(), nullptr, false).value("source", json()) == json(id);
        });
    }

    void turnRoutingOn(const char *fallback) {
        ASSERT_TRUE(menu->choose({"Enable App Routing"}));
        EXPECT_TRUE(handlerBecomes("org.fernhop.Fernhop.desktop"));
        EXPECT_TRUE(settingBecomes("routingFallbackBrowserID", fallback));
    }

    /// Sends links of docs.example, and those from Mail, to the browser "other".
    void makeRules() {
        ASSERT_TRUE(menu->clickFirstIn("URL Rules"));
        ASSERT_TRUE(dialogOpens("添加 URL 浏览器规则"));
        type(" docs.example ");
        press({"Tab", "Up", "Return"});
        ASSERT_TRUE(waitUntil([&] { return !settings().value("urlRules", json::array()).empty(); }));
        const json rule = settings()["urlRules"][0];
        EXPECT_EQ(rule["pattern"], "docs.example");
        EXPECT_EQ(rule["browserBundleID"], "other");
        ASSERT_TRUE(menu->choose({"Set Browser for Apps", "Mail_1", "other"}));
        EXPECT_TRUE(settingBecomes("appRules", {{mail, "other"}}));
    }

    /// Opens a link for the URL rule, one for the app rule, and one that no rule speaks of.
    void followLinks() {
        openLink("https://docs.example/1");
        EXPECT_EQ(linksOf(*other, 1), Links{"https://docs.example/1"});
        support::XTestClient windows(session->display->name());
        (void)windows.window("mail", mail);
        EXPECT_TRUE(sourceBecomes(mail));
        openLink("https://mail.example/2");
        EXPECT_EQ(linksOf(*other, 2).back(), "https://mail.example/2");
        (void)windows.window("chat", chat);
        EXPECT_TRUE(sourceBecomes(chat));
        openLink("https://chat.example/3");
        EXPECT_EQ(linksOf(session->browser, 1), Links{"https://chat.example/3"});
    }

    std::optional<PanelSession> session;
    std::optional<support::RecordingBrowser> other;
    std::optional<TrayMenu> menu;
};

TEST_F(IconAlone, RulesAreMadeLinksFollowThemAndTheDefaultBrowserComesBack) {
    EXPECT_EQ(session->defaultHandler(), "web.desktop");
    ASSERT_NO_FATAL_FAILURE(turnRoutingOn("web"));
    ASSERT_NO_FATAL_FAILURE(makeRules());
    ASSERT_NO_FATAL_FAILURE(followLinks());

    ASSERT_TRUE(menu->choose({"other"}));
    EXPECT_TRUE(handlerBecomes("other.desktop"));
    EXPECT_TRUE(settingBecomes("routingFallbackBrowserID", "other"));
    openLink("https://mail.example/4");
    EXPECT_EQ(linksOf(*other, 3).back(), "https://mail.example/4");

    ASSERT_NO_FATAL_FAILURE(turnRoutingOn("other"));
    ASSERT_TRUE(menu->choose({"退出时恢复默认浏览器"}));
    EXPECT_TRUE(settingBecomes("restoresDefaultBrowserOnQuit", true));
    ASSERT_TRUE(menu->choose({"Quit"}));
    EXPECT_EQ(session->resident->wait(), 0);
    EXPECT_EQ(session->defaultHandler(), "other.desktop");
    EXPECT_EQ(session->browser.links().size() + other->links().size(), 4U) << "a link came twice";
}

TEST_F(IconAlone, RulesAreChangedAndRemoved) {
    ASSERT_EQ(session->fernhop({"routing", "on"}), 0) << session->output();
    ASSERT_EQ(session->fernhop({"url-rules", "add", "a_b & __c__", "web"}), 0) << session->output();
    ASSERT_EQ(session->fernhop({"url-rules", "add", "second", "web"}), 0) << session->output();
    ASSERT_EQ(session->fernhop({"app-rules", "set", mail, "web"}), 0) << session->output();
    const auto rule = [this] { return settings()["urlRules"].front(); };

    ASSERT_TRUE(menu->choose({"URL Rules", "a_b & __c__", "other"}));
    EXPECT_TRUE(waitUntil([&] { return rule()["browserBundleID"] == "other"; }));
    ASSERT_TRUE(menu->choose({"URL Rules", "a_b & __c__", "Edit Rule…"}));
    ASSERT_TRUE(dialogOpens("修改 URL 浏览器规则"));
    press({"ctrl+a"});
    type("*.example/*");
    press({"Return"});
    EXPECT_TRUE(waitUntil([&] { return rule()["pattern"] == "*.example/*"; }));
    EXPECT_EQ(rule()["browserBundleID"], "other");
    ASSERT_TRUE(menu->choose({"URL Rules", "*.example/*", "Remove Rule"}));
    EXPECT_TRUE(waitUntil([&] { return rule()["pattern"] == "second"; }));

    ASSERT_TRUE(menu->choose({"App Rules", "Mail_1 -> web", "other"}));
    EXPECT_TRUE(settingBecomes("appRules", {{mail, "other"}}));
    ASSERT_TRUE(menu->choose({"App Rules", "Mail_1 -> other", "Clear Rule"}));
    EXPECT_TRUE(settingBecomes("appRules", json::object()));
    EXPECT_EQ(menu->seen({"App Rules"}), Titles{"(No app rules yet)"});
    EXPECT_EQ(session->defaultHandler(), "org.fernhop.Fernhop.desktop");
}

TEST_F(IconAlone, NewBrowsersAreFoundAndFeedbackIsAskedFor) {
    support::RecordingBrowser late(session->home, "late");
    session->home.writeDesktopEntry("late", late.desktopEntry());
    const auto lists = [this](const std::string &title) {
        const auto titles = menu->seen({});
        return std::find(titles.begin(), titles.end(), title) != titles.end();
    };
    EXPECT_FALSE(lists("late"));
    ASSERT_TRUE(menu->choose({"刷新 App 列表"}));
    EXPECT_TRUE(waitUntil([&] { return lists("late"); }));
    ASSERT_TRUE(menu->choose({"late"}));
    EXPECT_TRUE(handlerBecomes("late.desktop"));

    ASSERT_TRUE(menu->choose({"建议反馈"}));
    ASSERT_TRUE(dialogOpens("建议反馈"));
    press({"Escape"});
    EXPECT_TRUE(waitUntil([this] {
        return session->input({"search", "--onlyvisible", "--name", "建议反馈"}) != 0;
    }));
    EXPECT_TRUE(session->resident->isRunning());
}

TEST_F(IconAlone, BrowsersStartAsBeforeWhileADialogIsOpen) {
    ASSERT_EQ(session->fernhop({"routing", "on"}), 0) << session->output();
    openLink("https://before.example/");
    ASSERT_EQ(linksOf(session->browser, 1).size(), 1U);
    ASSERT_TRUE(menu->choose({"建议反馈"}));
    ASSERT_TRUE(dialogOpens("建议反馈"));
    openLink("https://meanwhile.example/");
    ASSERT_EQ(linksOf(session->browser, 2).size(), 2U);

    auto starts = session->browser.starts();
    for (auto &start : starts) {
        // Each start has its own.
        for (const char *name :
             {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN", "GIO_LAUNCHED_DESKTOP_FILE_PID"})
            start.environment.erase(name);
        std::sort(start.descriptors.begin(), start.descriptors.end());
    }
    EXPECT_EQ(starts[1].environment, starts[0].environment);
    EXPECT_EQ(starts[1].descriptors, starts[0].descriptors);
    EXPECT_EQ(starts[1].blockedSignals, starts[0].blockedSignals);
    EXPECT_EQ(starts[1].ignoredSignals, starts[0].ignoredSignals);
    EXPECT_EQ(starts[1].folder, starts[0].folder);
}

} // namespace
} // namespace fernhop::desktoptest
