#include "app/Controller.h"
#include "app/MenuText.h"

#include <sstream>

namespace fernhop {
namespace {

/// Starts with "browser.a" as the system's default and the application "com.example.Mail" beside the two
/// browsers.
class Menu : public ControllerTest {
  protected:
    Menu() {
        desktop.installApplication("com.example.Mail");
        setHandlers("browser.a");
    }

    const ui::Menu &menu() const { return *desktop.statusBar.menu; }

    const ui::MenuItem &item(const std::string &title) const {
        for (const auto &candidate : menu().items)
            if (candidate.title == title)
                return candidate;
        throw std::runtime_error("no item " + title);
    }

    std::string submenu(const std::string &title) const { return asText(item(title).submenu.value()); }

    void press(const ui::MenuItem &pressed) { controller->perform(pressed.action, {.sender = &pressed}); }
};

TEST_F(Menu, WhileRoutingIsOffWithoutRules) {
    launch();
    EXPECT_EQ(asText(menu()),
              R"((Fernhop)
(System default: browser.a)
---
Enable App Routing => enableAppRouting
退出时恢复默认浏览器 => toggleRestoreDefaultBrowserOnQuit:
---
(Switch System Default)
[x] browser.a <browser.a.app 16> => switchSystemDefaultBrowser: with browser.a
browser.b <browser.b.app 16> => switchSystemDefaultBrowser: with browser.b
---
(URL Rules)
    Add URL Rule… => showAddURLRuleDialog
    ---
    (No URL rules yet)
(Set Browser for Apps)
    browser.a <browser.a.app 16>
        [x] browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app browser.a browser browser.a
        browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app browser.a browser browser.b
    browser.b <browser.b.app 16>
        [x] browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app browser.b browser browser.a
        browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app browser.b browser browser.b
    com.example.Mail <com.example.Mail.app 16>
        [x] browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.a
        browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.b
(App Rules)
    (No app rules yet)
---
刷新 App 列表 => refreshApplicationList
建议反馈 => showFeedbackDialog
Quit => quit key q
)");
}

TEST_F(Menu, WhileRoutingIsOnWithRules) {
    setHandlers(own);
    storeFallback("browser.b");
    store(settingsKey::restoresDefaultBrowserOnQuit, {true});
    storeURLRules({{"1", "docs.example", "browser.b"}, {"2", "a & b_c", "browser.gone"}});
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    EXPECT_EQ(asText(menu()),
              R"((Fernhop)
(App routing is enabled)
---
[x] Enable App Routing => enableAppRouting
[x] 退出时恢复默认浏览器 => toggleRestoreDefaultBrowserOnQuit:
---
(Switch System Default)
browser.a <browser.a.app 16> => switchSystemDefaultBrowser: with browser.a
browser.b <browser.b.app 16> => switchSystemDefaultBrowser: with browser.b
---
URL Rules
    Add URL Rule… => showAddURLRuleDialog
    ---
    docs.example <link.circle 0>
        browser.a <browser.a.app 16> => setBrowserForURLRule: with rule 1 browser browser.a
        [x] browser.b <browser.b.app 16> => setBrowserForURLRule: with rule 1 browser browser.b
        ---
        Edit Rule… => editURLRule: with 1
        Remove Rule => clearURLRule: with 1
    a & b_c <link.circle 0>
        browser.a <browser.a.app 16> => setBrowserForURLRule: with rule 2 browser browser.a
        browser.b <browser.b.app 16> => setBrowserForURLRule: with rule 2 browser browser.b
        ---
        Edit Rule… => editURLRule: with 2
        Remove Rule => clearURLRule: with 2
Set Browser for Apps
    browser.a <browser.a.app 16>
        browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app browser.a browser browser.a
        [x] browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app browser.a browser browser.b
    browser.b <browser.b.app 16>
        browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app browser.b browser browser.a
        [x] browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app browser.b browser browser.b
    com.example.Mail <com.example.Mail.app 16>
        [x] browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.a
        browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.b
        ---
        Clear Rule => clearRule: with com.example.Mail
App Rules
    com.example.Mail -> browser.a <com.example.Mail.app 16>
        [x] browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.a
        browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.b
        ---
        Clear Rule => clearRule: with com.example.Mail
---
刷新 App 列表 => refreshApplicationList
建议反馈 => showFeedbackDialog
Quit => quit key q
)");
}

TEST_F(Menu, WithNothingInstalledAndNoHandler) {
    desktop.applications.remove("/Applications");
    desktop.launchServices.handlers = {};
    launch();
    EXPECT_EQ(asText(menu()),
              R"((Fernhop)
(System default: Unknown)
---
Enable App Routing => enableAppRouting
退出时恢复默认浏览器 => toggleRestoreDefaultBrowserOnQuit:
---
(Switch System Default)
---
(URL Rules)
    Add URL Rule… => showAddURLRuleDialog
    ---
    (No URL rules yet)
(Set Browser for Apps)
    (No apps found)
(App Rules)
    (No app rules yet)
---
刷新 App 列表 => refreshApplicationList
建议反馈 => showFeedbackDialog
Quit => quit key q
)");
}

TEST_F(Menu, WhileRoutingIsOnWithRulesAndNoBrowser) {
    desktop.applications.remove("/Applications/browser.a.app");
    desktop.applications.remove("/Applications/browser.b.app");
    setHandlers(own);
    storeFallback("browser.b");
    storeURLRules({{"1", "docs.example", "browser.b"}});
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    EXPECT_EQ(asText(menu()),
              R"((Fernhop)
(App routing is enabled)
---
[x] Enable App Routing => enableAppRouting
退出时恢复默认浏览器 => toggleRestoreDefaultBrowserOnQuit:
---
(Switch System Default)
---
URL Rules
    Add URL Rule… => showAddURLRuleDialog
    ---
    docs.example <link.circle 0>
        ---
        Edit Rule… => editURLRule: with 1
        Remove Rule => clearURLRule: with 1
Set Browser for Apps
    (No browsers found)
App Rules
    com.example.Mail -> browser.a <com.example.Mail.app 16>
        ---
        Clear Rule => clearRule: with com.example.Mail
---
刷新 App 列表 => refreshApplicationList
建议反馈 => showFeedbackDialog
Quit => quit key q
)");
}

TEST_F(Menu, WhileTheHandlerAndTheAppsOfRulesAreGone) {
    setHandlers("browser.gone");
    storeFallback("browser.b");
    desktop.applications.remove("/Applications/com.example.Mail.app");
    storeURLRules({{"1", "docs.example", "browser.gone"}});
    storeAppRule("com.example.Mail", "browser.gone");
    launch();
    EXPECT_EQ(asText(menu()),
              R"((Fernhop)
(System default: browser.gone)
---
Enable App Routing => enableAppRouting
退出时恢复默认浏览器 => toggleRestoreDefaultBrowserOnQuit:
---
(Switch System Default)
browser.a <browser.a.app 16> => switchSystemDefaultBrowser: with browser.a
browser.b <browser.b.app 16> => switchSystemDefaultBrowser: with browser.b
---
(URL Rules)
    Add URL Rule… => showAddURLRuleDialog
    ---
    docs.example <link.circle 0>
        browser.a <browser.a.app 16> => setBrowserForURLRule: with rule 1 browser browser.a
        browser.b <browser.b.app 16> => setBrowserForURLRule: with rule 1 browser browser.b
        ---
        Edit Rule… => editURLRule: with 1
        Remove Rule => clearURLRule: with 1
(Set Browser for Apps)
    browser.a <browser.a.app 16>
        browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app browser.a browser browser.a
        browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app browser.a browser browser.b
    browser.b <browser.b.app 16>
        browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app browser.b browser browser.a
        browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app browser.b browser browser.b
(App Rules)
    com.example.Mail -> browser.gone
        browser.a <browser.a.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.a
        browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.b
        ---
        Clear Rule => clearRule: with com.example.Mail
---
刷新 App 列表 => refreshApplicationList
建议反馈 => showFeedbackDialog
Quit => quit key q
)");
}

TEST_F(Menu, DefaultBrowserIsUnknownWithoutAHandler) {
    desktop.launchServices.handlers = {{"http", "browser.a"}};
    launch();
    EXPECT_EQ(menu().items[1].title, "System default: Unknown");
    EXPECT_EQ(asText(menu()).find("[x] browser.a <browser.a.app 16> => switchSystemDefaultBrowser:"),
              std::string::npos);
}

TEST_F(Menu, DefaultMayBeAnApplicationThatIsNoBrowser) {
    setHandlers("com.example.Mail");
    launch();
    EXPECT_EQ(menu().items[1].title, "System default: com.example.Mail");
}

TEST_F(Menu, AppRulesAreSortedByIdentifierWhateverTheirNames) {
    desktop.applications.installApplication("/Applications/1.app", "com.b.App", "Aaa");
    desktop.applications.installApplication("/Applications/2.app", "Com.a.App", "Zzz");
    store(settingsKey::appRules,
          {PropertyDictionary{
              {"com.b.App", {"browser.a"}}, {"Com.a.App", {"browser.a"}}, {"com.a.App", {"x"}}}});
    launch();
    std::vector<std::string> titles;
    for (const auto &rule : item("App Rules").submenu->items)
        titles.push_back(rule.title);
    EXPECT_EQ(titles, (std::vector<std::string>{"Zzz -> browser.a", "com.a.App -> x", "Aaa -> browser.a"}));
    EXPECT_EQ(item("App Rules").submenu->items[1].image, nullptr);
}

TEST_F(Menu, UnreadableAppRulesShowAsNone) {
    store(settingsKey::appRules, {PropertyDictionary{{"com.example.Mail", {"browser.b"}}, {"x", {true}}}});
    launch();
    EXPECT_EQ(submenu("App Rules"), "(No app rules yet)\n");
    EXPECT_EQ(submenu("Set Browser for Apps").find("Clear Rule"), std::string::npos);
}

TEST_F(Menu, UndecodableURLRulesShowAsNone) {
    store(settingsKey::urlRules, {PropertyData{"nonsense"}});
    launch();
    EXPECT_EQ(submenu("URL Rules"), "Add URL Rule… => showAddURLRuleDialog\n---\n(No URL rules yet)\n");
}

TEST_F(Menu, SubmenusCheckNothingWithoutAnEffectiveDefault) {
    setHandlers(own);
    storeAppRule("com.example.Mail", "browser.gone");
    storeFallback("browser.gone");
    launch();
    EXPECT_EQ(submenu("Set Browser for Apps").find("[x]"), std::string::npos);
    EXPECT_EQ(submenu("App Rules").find("[x]"), std::string::npos);
}

TEST_F(Menu, EveryActionIsKnownToTheController) {
    setHandlers(own);
    storeURLRules({{"1", "docs.example", "browser.b"}});
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    const std::function<void(const ui::Menu &)> check = [&](const ui::Menu &level) {
        for (const auto &entry : level.items) {
            EXPECT_TRUE(entry.action.empty() || controller->actionTable().contains(entry.action))
                << entry.action;
            if (entry.submenu)
                check(*entry.submenu);
        }
    };
    check(menu());
}

TEST_F(Menu, PickingABrowserForAnAppStoresItTurnsRoutingOnAndShowsIt) {
    launch();
    press(item("Set Browser for Apps").submenu->items[2].submenu->items[1]);
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"com.example.Mail", "browser.b"}}));
    EXPECT_EQ(menu().items[1].title, "App routing is enabled");
    EXPECT_TRUE(item("App Rules").enabled);
    EXPECT_EQ(item("App Rules").submenu->items[0].title, "com.example.Mail -> browser.b");
}

TEST_F(Menu, RemovingARuleShowsAtOnce) {
    setHandlers(own);
    storeURLRules({{"1", "one", "browser.a"}, {"2", "two", "browser.a"}, {"3", "three", "browser.a"}});
    launch();
    press(item("URL Rules").submenu->items[3].submenu->items[4]);
    const auto &rules = item("URL Rules").submenu->items;
    ASSERT_EQ(rules.size(), 4u);
    EXPECT_EQ(rules[2].title, "one");
    EXPECT_EQ(rules[3].title, "three");
    EXPECT_TRUE(desktop.alerts.shown.empty());
}

TEST_F(Menu, ClearingAnAppRuleKeepsRoutingOn) {
    setHandlers(own);
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    press(item("App Rules").submenu->items[0].submenu->items[3]);
    EXPECT_EQ(submenu("App Rules"), "(No app rules yet)\n");
    EXPECT_EQ(menu().items[1].title, "App routing is enabled");
}

TEST_F(Menu, RestoreItemFollowsItsOwnCheckMark) {
    launch();
    press(menu().items[4]);
    EXPECT_EQ(menu().items[4].state, ui::ControlState::on);
    press(menu().items[4]);
    EXPECT_EQ(menu().items[4].state, ui::ControlState::off);
}

TEST_F(Menu, SwitchingTheDefaultWhileRoutingIsOnTurnsItOff) {
    setHandlers(own);
    launch();
    press(menu().items[8]);
    EXPECT_EQ(menu().items[1].title, "System default: browser.b");
    EXPECT_EQ(menu().items[8].state, ui::ControlState::on);
}

TEST_F(Menu, StaleItemsOfARuleThatIsGoneDoNothing) {
    setHandlers(own);
    storeURLRules({{"1", "one", "browser.a"}});
    launch();
    const auto stale = item("URL Rules").submenu->items[2].submenu->items;
    storeURLRules({});
    rebuilds();
    press(stale[0]);
    press(stale[3]);
    EXPECT_EQ(rebuilds(), 0);
    EXPECT_TRUE(desktop.alerts.shown.empty());
    press(stale[4]);
    EXPECT_EQ(rebuilds(), 1);
}

TEST_F(Menu, IsBuiltAnewEachTime) {
    launch();
    const auto first = desktop.statusBar.menu;
    controller->rebuildMenu();
    EXPECT_NE(desktop.statusBar.menu, first);
    EXPECT_TRUE(ui::looksTheSame(*desktop.statusBar.menu, *first));
}

TEST_F(Menu, RebuildAsksTheWorkspaceForNoIconASecondTime) {
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    const auto requests = desktop.workspace.iconRequests.size();
    EXPECT_EQ(requests, 3u);
    controller->rebuildMenu();
    EXPECT_EQ(desktop.workspace.iconRequests.size(), requests);
}

TEST_F(Menu, LooksDifferAsSoonAsAnythingThatShowsDoes) {
    launch();
    const ui::Menu before = menu();
    const auto differs = [&](const std::function<void(ui::Menu &)> &change) {
        ui::Menu changed = before;
        change(changed);
        return !ui::looksTheSame(before, changed);
    };
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items[0].title += "x"; }));
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items[3].state = ui::ControlState::on; }));
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items[3].enabled = false; }));
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items[7].image = nullptr; }));
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items.pop_back(); }));
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items[2].isSeparator = false; }));
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items.back().keyEquivalent = ""; }));
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items[10].submenu->items[0].title += "x"; }));
    EXPECT_TRUE(differs([](ui::Menu &m) { m.items[10].submenu.reset(); }));
    EXPECT_FALSE(differs([](ui::Menu &m) { m.items[7].representedObject = std::string("other"); }));
}

} // namespace
} // namespace fernhop
