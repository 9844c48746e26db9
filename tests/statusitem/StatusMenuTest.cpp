#include "statusitem/MenuTest.h"

namespace fernhop {
namespace {

TEST_F(MenuTest, WhileRoutingIsOffWithoutRules) {
    launch();
    EXPECT_EQ(text(),
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

TEST_F(MenuTest, WhileRoutingIsOnWithRules) {
    setHandlers(own);
    storeFallback("browser.b");
    store(settingsKey::restoresDefaultBrowserOnQuit, {true});
    storeURLRules({{"1", "docs.example", "browser.b"}, {"2", "a & b_c", "browser.gone"}});
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    EXPECT_EQ(text(),
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

TEST_F(MenuTest, WithNothingInstalledAndNoHandler) {
    desktop.applications.remove("/Applications");
    desktop.launchServices.handlers = {};
    launch();
    EXPECT_EQ(text(),
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

TEST_F(MenuTest, WhileRoutingIsOnWithRulesAndNoBrowser) {
    desktop.applications.remove("/Applications/browser.a.app");
    desktop.applications.remove("/Applications/browser.b.app");
    setHandlers(own);
    storeFallback("browser.b");
    storeURLRules({{"1", "docs.example", "browser.b"}});
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    EXPECT_EQ(text(),
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

TEST_F(MenuTest, WhileTheHandlerAndTheAppsOfRulesAreUninstalled) {
    setHandlers("browser.gone");
    storeFallback("browser.b");
    desktop.applications.remove("/Applications/com.example.Mail.app");
    storeURLRules({{"1", "docs.example", "browser.gone"}});
    storeAppRule("com.example.Mail", "browser.gone");
    launch();
    EXPECT_EQ(text(),
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

TEST_F(MenuTest, WithNamesThatDifferFromIdentifiers) {
    installNamedApplications();
    storeURLRules({{"1", " x ", "browser.b"}});
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    EXPECT_EQ(text(),
              R"((Fernhop)
(System default: Zebra)
---
Enable App Routing => enableAppRouting
退出时恢复默认浏览器 => toggleRestoreDefaultBrowserOnQuit:
---
(Switch System Default)
Apple <Two.app 16> => switchSystemDefaultBrowser: with browser.b
[x] Zebra <One.app 16> => switchSystemDefaultBrowser: with browser.a
---
(URL Rules)
    Add URL Rule… => showAddURLRuleDialog
    ---
     x  <link.circle 0>
        [x] Apple <Two.app 16> => setBrowserForURLRule: with rule 1 browser browser.b
        Zebra <One.app 16> => setBrowserForURLRule: with rule 1 browser browser.a
        ---
        Edit Rule… => editURLRule: with 1
        Remove Rule => clearURLRule: with 1
(Set Browser for Apps)
    Apple <Two.app 16>
        Apple <Two.app 16> => setBrowserForSelectedApp: with app browser.b browser browser.b
        [x] Zebra <One.app 16> => setBrowserForSelectedApp: with app browser.b browser browser.a
    Notes <Three.app 16>
        Apple <Two.app 16> => setBrowserForSelectedApp: with app com.example.Notes browser browser.b
        [x] Zebra <One.app 16> => setBrowserForSelectedApp: with app com.example.Notes browser browser.a
    Zebra <One.app 16>
        Apple <Two.app 16> => setBrowserForSelectedApp: with app browser.a browser browser.b
        [x] Zebra <One.app 16> => setBrowserForSelectedApp: with app browser.a browser browser.a
(App Rules)
    com.example.Mail -> Zebra
        Apple <Two.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.b
        [x] Zebra <One.app 16> => setBrowserForSelectedApp: with app com.example.Mail browser browser.a
        ---
        Clear Rule => clearRule: with com.example.Mail
---
刷新 App 列表 => refreshApplicationList
建议反馈 => showFeedbackDialog
Quit => quit key q
)");
}

TEST_F(MenuTest, DefaultThatIsNotABrowserIsShownByName) {
    installNamedApplications();
    setHandlers("com.example.Notes");
    launch();
    EXPECT_EQ(headline(), "System default: Notes");
    EXPECT_EQ(text().find("[x]"), std::string::npos);
}

} // namespace
} // namespace fernhop
