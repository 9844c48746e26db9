#include "statusitem/MenuTest.h"

#include <functional>

namespace fernhop {
namespace {

TEST_F(MenuTest, EveryActionIsKnownToTheController) {
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

TEST_F(MenuTest, ChoosingABrowserForAnAppStoresItTurnsRoutingOnAndShowsIt) {
    launch();
    press(item("Set Browser for Apps").submenu->items[2].submenu->items[1]);
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"com.example.Mail", "browser.b"}}));
    EXPECT_EQ(headline(), "App routing is enabled");
    EXPECT_TRUE(item("App Rules").enabled);
    EXPECT_EQ(item("App Rules").submenu->items[0].title, "com.example.Mail -> browser.b");
}

TEST_F(MenuTest, RemovedRuleDisappearsAtOnce) {
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

TEST_F(MenuTest, ClearingAnAppRuleKeepsRoutingOn) {
    setHandlers(own);
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    press(item("App Rules").submenu->items[0].submenu->items[3]);
    EXPECT_EQ(submenu("App Rules"), "(No app rules yet)\n");
    EXPECT_EQ(headline(), "App routing is enabled");
}

TEST_F(MenuTest, RestoreItemFollowsItsOwnCheckMark) {
    launch();
    press(menu().items[4]);
    EXPECT_EQ(menu().items[4].state, ui::ControlState::on);
    press(menu().items[4]);
    EXPECT_EQ(menu().items[4].state, ui::ControlState::off);
}

TEST_F(MenuTest, SwitchingTheDefaultWhileRoutingIsOnTurnsItOff) {
    setHandlers(own);
    launch();
    press(menu().items[8]);
    EXPECT_EQ(headline(), "System default: browser.b");
    EXPECT_EQ(menu().items[8].state, ui::ControlState::on);
}

TEST_F(MenuTest, StaleItemsOfARemovedRuleDoNothing) {
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

} // namespace
} // namespace fernhop
