#include "statusitem/MenuTest.h"

#include <algorithm>
#include <functional>

namespace fernhop {
namespace {

TEST_F(MenuTest, DefaultBrowserIsUnknownWithoutAHandler) {
    desktop.launchServices.handlers = {{"http", "browser.a"}};
    launch();
    EXPECT_EQ(headline(), "System default: Unknown");
    EXPECT_EQ(text().find("[x] browser.a <browser.a.app 16> => switchSystemDefaultBrowser:"),
              std::string::npos);
}

TEST_F(MenuTest, AppRulesAreSortedByIdentifierWhateverTheirNames) {
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

TEST_F(MenuTest, UnreadableAppRulesShowAsNone) {
    launch();
    const std::string without = text();
    ASSERT_NE(without.find("(No app rules yet)"), std::string::npos);
    const PropertyValue rule{"browser.b"};
    for (const PropertyValue &value :
         {PropertyValue{PropertyDictionary{{"com.example.Mail", rule}, {"x", {true}}}},
          PropertyValue{"com.example.Mail"}, PropertyValue{PropertyArray{rule}}}) {
        store(settingsKey::appRules, value);
        controller->rebuildMenu();
        EXPECT_EQ(text(), without); // with the system's default checked for each application
    }
}

TEST_F(MenuTest, UndecodableURLRulesShowAsNone) {
    store(settingsKey::urlRules, {PropertyData{"nonsense"}});
    launch();
    EXPECT_EQ(submenu("URL Rules"), "Add URL Rule… => showAddURLRuleDialog\n---\n(No URL rules yet)\n");
}

TEST_F(MenuTest, SubmenusCheckNothingWithoutAnEffectiveDefault) {
    setHandlers(own);
    storeAppRule("com.example.Mail", "browser.gone");
    storeFallback("browser.gone");
    launch();
    EXPECT_EQ(submenu("Set Browser for Apps").find("[x]"), std::string::npos);
    EXPECT_EQ(submenu("App Rules").find("[x]"), std::string::npos);
}

TEST_F(MenuTest, IsRebuiltEachTime) {
    launch();
    const auto first = desktop.statusBar.menu;
    controller->rebuildMenu();
    EXPECT_NE(desktop.statusBar.menu, first);
    EXPECT_TRUE(ui::looksTheSame(*desktop.statusBar.menu, *first));
}

TEST_F(MenuTest, RebuildFetchesNoIconAgain) {
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    const auto requests = desktop.workspace.iconRequests.size();
    EXPECT_EQ(requests, 3u);
    controller->rebuildMenu();
    EXPECT_EQ(desktop.workspace.iconRequests.size(), requests);
}

TEST_F(MenuTest, LooksDifferWhenAnythingVisibleDiffers) {
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

TEST_F(MenuTest, ExternalChangesAppearAtTheNextRebuild) {
    launch();
    setHandlers(own);
    storeFallback("browser.b");
    store(settingsKey::restoresDefaultBrowserOnQuit, {true});
    storeURLRules({{"1", "one.example", "browser.a"}, {"2", "two.example", "browser.b"}});
    storeAppRule("com.example.Mail", "browser.a");
    controller->rebuildMenu();
    EXPECT_EQ(headline(), "App routing is enabled");
    EXPECT_EQ(item("Enable App Routing").state, ui::ControlState::on);
    EXPECT_EQ(item("退出时恢复默认浏览器").state, ui::ControlState::on);
    EXPECT_EQ(item("browser.a").state, ui::ControlState::off);
    EXPECT_TRUE(item("URL Rules").enabled);
    EXPECT_EQ(item("URL Rules").submenu->items.at(2).title, "one.example");
    EXPECT_EQ(item("URL Rules").submenu->items.at(3).title, "two.example");
    EXPECT_EQ(item("App Rules").submenu->items.at(0).title, "com.example.Mail -> browser.a");
    EXPECT_NE(submenu("Set Browser for Apps")
                  .find("[x] browser.b <browser.b.app 16> => setBrowserForSelectedApp: with app browser.a"),
              std::string::npos);
}

TEST_F(MenuTest, ReadsTheDefaultBrowserOnce) {
    launch();
    const std::string before = text();
    for (const char *next : {"browser.b", own}) {
        for (int changing = 1; changing <= 4; ++changing) {
            setHandlers("browser.a");
            int readings = 0;
            desktop.launchServices.afterRead = [&] {
                if (++readings == changing)
                    setHandlers(next);
            };
            controller->rebuildMenu();
            EXPECT_EQ(readings, 1);
            EXPECT_EQ(text(), before) << next << " after reading " << changing;
            EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop");
        }
    }
    desktop.launchServices.afterRead = nullptr;
    setHandlers("browser.b");
    controller->rebuildMenu();
    EXPECT_EQ(headline(), "System default: browser.b");
    EXPECT_EQ(item("browser.b").state, ui::ControlState::on);
}

TEST_F(MenuTest, IconAndToolTipAreSetBeforeIt) {
    setHandlers(own);
    int menus = 0;
    desktop.statusBar.atMenu = [&] {
        ++menus;
        EXPECT_EQ(desktop.statusBar.toolTip, "Fernhop - App Routing On");
        EXPECT_TRUE(desktop.statusBar.image);
        EXPECT_EQ(desktop.statusBar.imagesSet, menus);
    };
    launch();
    controller->rebuildMenu();
    EXPECT_EQ(menus, 2);
}

TEST_F(MenuTest, FernhopsOwnNameIsNotLookedUpWhileRoutingIsOn) {
    setHandlers(own);
    launch();
    EXPECT_EQ(std::ranges::count(desktop.workspace.lookups, own), 0);
    setHandlers("browser.gone");
    controller->rebuildMenu();
    EXPECT_EQ(std::ranges::count(desktop.workspace.lookups, "browser.gone"), 1);
}

TEST_F(MenuTest, IdentifiersThatDifferInCaseAreOtherBrowsers) {
    setHandlers("Browser.A");
    storeURLRules({{"1", "docs.example", "Browser.B"}});
    storeAppRule("com.example.Mail", "Browser.B");
    launch();
    EXPECT_EQ(headline(), "System default: Browser.A");
    EXPECT_EQ(item("App Rules").submenu->items.at(0).title, "com.example.Mail -> Browser.B");
    EXPECT_EQ(text().find("[x]"), std::string::npos);
    setHandlers("org.fernhop.fernhop");
    controller->rebuildMenu();
    EXPECT_EQ(headline(), "System default: org.fernhop.fernhop");
    EXPECT_FALSE(item("App Rules").enabled);
}

} // namespace
} // namespace fernhop
