#include "app/Controller.h"
#include "platform/ui/Button.h"
#include "platform/ui/MenuItem.h"
#include "rules/RuleSelection.h"

#include <set>

namespace fernhop {
namespace {

class Actions : public ControllerTest {
  protected:
    Actions() {
        storeURLRules({{"1", "one.example", "browser.a"}, {"2", "two.example", "browser.b"}});
        storeAppRule("com.example.Mail", "browser.a");
        setHandlers(own);
        launch();
        desktop.statusBar.menusSet = 0;
    }

    void performFromItem(const std::string &selector, ui::RepresentedObject object) {
        ui::MenuItem item;
        item.representedObject = std::move(object);
        controller->perform(selector, {.sender = &item});
    }

    void performFromButton(const std::string &selector, const std::string &identifier) {
        ui::Button button;
        button.identifier = identifier;
        controller->perform(selector, {.sender = &button});
    }

    static ui::RepresentedObject appSelection(const std::string &app, const std::string &browser) {
        return std::make_shared<const RuleSelection>(app, browser);
    }

    static ui::RepresentedObject urlSelection(const std::string &rule, const std::string &browser) {
        return std::make_shared<const URLRuleSelection>(rule, browser);
    }

    std::vector<URLRule> rules() { return controller->settings().urlRules(); }
    bool routing() { return controller->defaultHandlers().isRoutingEnabled(); }
};

TEST_F(Actions, TableHasEverySelector) {
    const std::set<std::string_view> expected{"init",
                                              "applicationDidFinishLaunching:",
                                              "applicationShouldHandleReopen:hasVisibleWindows:",
                                              "applicationShouldTerminateAfterLastWindowClosed:",
                                              "applicationShouldTerminate:",
                                              "systemAppearanceDidChange",
                                              "activeApplicationDidChange:",
                                              "showAddURLRuleDialog",
                                              "showAddRuleDialog",
                                              "filterRuleDialogApplications:",
                                              "numberOfRowsInTableView:",
                                              "tableView:viewForTableColumn:row:",
                                              "tableViewSelectionDidChange:",
                                              "updateRuleDialogHint",
                                              "enableAppRouting",
                                              "switchSystemDefaultBrowser:",
                                              "setBrowserForSelectedApp:",
                                              "clearRule:",
                                              "setBrowserForURLRule:",
                                              "editURLRule:",
                                              "clearURLRule:",
                                              "updateDefaultBrowserFromWindow:",
                                              "toggleRestoreDefaultBrowserOnQuit:",
                                              "showFeedbackDialog",
                                              "openContactFromButton:",
                                              "editRuleFromWindow:",
                                              "editURLRuleFromWindow:",
                                              "clearURLRuleFromWindow:",
                                              "clearRuleFromWindow:",
                                              "refreshApplicationList",
                                              "quit",
                                              "handleGetURLEvent:withReplyEvent:"};
    std::set<std::string_view> present;
    for (const auto &[selector, operation] : controller->actionTable()) {
        EXPECT_TRUE(operation) << selector;
        present.insert(selector);
    }
    EXPECT_EQ(present, expected);
}

TEST_F(Actions, UnknownSelectorIsReported) {
    EXPECT_FALSE(controller->perform("noSuchSelector:"));
    EXPECT_TRUE(controller->perform("showFeedbackDialog"));
}

TEST_F(Actions, EveryActionSurvivesASenderOfTheWrongKind) {
    const ui::MenuItem bare;
    const ui::Button nameless;
    for (const auto &[selector, operation] : controller->actionTable()) {
        if (!selector.ends_with(':') || selector == "applicationDidFinishLaunching:" ||
            selector == "toggleRestoreDefaultBrowserOnQuit:")
            continue;
        operation({});
        operation({.sender = &bare});
        operation({.sender = &nameless});
    }
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
    EXPECT_EQ(rules().size(), 2u);
    EXPECT_TRUE(routing());
    EXPECT_TRUE(desktop.alerts.shown.empty());
}

TEST_F(Actions, LinksAndNotificationsAlsoArriveBySelector) {
    const auto event = LinkEventDescriptor::getUrl("https://one.example/");
    controller->perform("handleGetURLEvent:withReplyEvent:", {.event = &event});
    EXPECT_EQ(opened().size(), 1u);

    const Notification activation{
        std::string(didActivateApplicationNotification),
        Notification::UserInfo{{std::string(workspaceApplicationKey), running("com.example.Mail")}}};
    controller->perform("activeApplicationDidChange:", {.notification = &activation});
    EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "com.example.Mail");

    controller->perform("systemAppearanceDidChange");
    EXPECT_EQ(desktop.statusBar.imagesSet, 3);
}

TEST_F(Actions, BrowserForAnAppIsStored) {
    performFromItem("setBrowserForSelectedApp:", appSelection("com.example.Chat", "browser.b"));
    EXPECT_EQ(controller->settings().appRules(),
              (AppRules{{"com.example.Chat", "browser.b"}, {"com.example.Mail", "browser.a"}}));
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
    EXPECT_TRUE(routing());
}

TEST_F(Actions, BrowserForAnAppTurnsRoutingOnWhenItIsOff) {
    setHandlers("browser.b");
    performFromItem("setBrowserForSelectedApp:", appSelection("com.example.Chat", "browser.b"));
    EXPECT_TRUE(routing());
    EXPECT_EQ(fallback(), "browser.b");
    EXPECT_EQ(desktop.statusBar.menusSet, 2); // for the mode, then for the rule
}

TEST_F(Actions, ClearingAnAppRuleDoesNotChangeRouting) {
    performFromItem("clearRule:", std::string("com.example.Mail"));
    EXPECT_TRUE(controller->settings().appRules().empty());
    EXPECT_TRUE(routing());
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
    EXPECT_TRUE(desktop.launchServices.calls.empty());
}

TEST_F(Actions, BrowserForAURLRuleKeepsItsPatternAndPosition) {
    performFromItem("setBrowserForURLRule:", urlSelection("1", "browser.b"));
    EXPECT_EQ(rules(),
              (std::vector<URLRule>{{"1", "one.example", "browser.b"}, {"2", "two.example", "browser.b"}}));
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(Actions, BrowserForAURLRuleTurnsRoutingOnWhenItIsOff) {
    setHandlers("browser.b");
    performFromItem("setBrowserForURLRule:", urlSelection("2", "browser.a"));
    EXPECT_TRUE(routing());
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

TEST_F(Actions, RulesAreStoredBeforeRoutingIsTurnedOnAndTheMenuShown) {
    setHandlers("browser.b");
    recordSteps();
    performFromItem("setBrowserForSelectedApp:", appSelection("com.example.Chat", "browser.a"));
    EXPECT_EQ(steps(), storedThenTurnedOn(settingsKey::appRules));
    setHandlers("browser.b");
    performFromItem("setBrowserForURLRule:", urlSelection("1", "browser.b"));
    EXPECT_EQ(steps(), storedThenTurnedOn(settingsKey::urlRules));
}

TEST_F(Actions, RulesAreRemovedBeforeTheMenuIsShown) {
    recordSteps();
    performFromItem("clearRule:", std::string("com.example.Mail"));
    performFromItem("clearURLRule:", std::string("1"));
    EXPECT_EQ(steps(), (Steps{"appRules", "menu", "urlRules", "menu"}));
}

TEST_F(Actions, BrowserForARemovedRuleChangesNothing) {
    setHandlers("browser.b");
    performFromItem("setBrowserForURLRule:", urlSelection("3", "browser.b"));
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
    EXPECT_FALSE(routing());
}

TEST_F(Actions, SelectionOfTheOtherKindChangesNothing) {
    performFromItem("setBrowserForURLRule:", appSelection("1", "browser.b"));
    performFromItem("setBrowserForSelectedApp:", urlSelection("1", "browser.b"));
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
}

TEST_F(Actions, RepresentedObjectOfAnotherTypeDoesNothing) {
    setHandlers("browser.b"); // so an action that did not stop would turn routing on
    const auto before = desktop.defaults.stored;
    const int writes = desktop.defaults.writes;
    for (const char *selector :
         {"clearRule:", "editURLRule:", "clearURLRule:", "switchSystemDefaultBrowser:"})
        for (const char *name : {"com.example.Mail", "1"}) {
            performFromItem(selector, appSelection(name, "browser.a"));
            performFromItem(selector, urlSelection(name, "browser.a"));
        }
    for (const char *selector : {"setBrowserForSelectedApp:", "setBrowserForURLRule:"})
        for (const char *text : {"com.example.Mail", "1", "browser.a"})
            performFromItem(selector, std::string(text));
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
    EXPECT_EQ(desktop.defaults.writes, writes);
    EXPECT_EQ(desktop.defaults.stored, before);
    EXPECT_TRUE(desktop.launchServices.calls.empty());
    EXPECT_TRUE(desktop.alerts.shown.empty());
}

TEST_F(Actions, FirstOfTwoRulesWithTheSameIdentifierIsUsed) {
    storeURLRules({{"1", "first.example", "browser.a"}, {"1", "second.example", "browser.b"}});
    performFromItem("setBrowserForURLRule:", urlSelection("1", "browser.b"));
    const std::vector<URLRule> changed{{"1", "first.example", "browser.b"},
                                       {"1", "second.example", "browser.b"}};
    EXPECT_EQ(rules(), changed);

    // The dialog saves its initial values.
    desktop.alerts.user = [](const ui::Alert &) { return ui::alertFirstButtonReturn; };
    performFromItem("editURLRule:", std::string("1"));
    EXPECT_EQ(desktop.alerts.shown.size(), 1u);
    EXPECT_EQ(rules(), changed);
}

TEST_F(Actions, EditingARuleOpensItsDialogWithoutARebuild) {
    performFromItem("editURLRule:", std::string("2"));
    performFromItem("editURLRule:", std::string("3"));
    ASSERT_EQ(desktop.alerts.shown.size(), 1u);
    EXPECT_EQ(desktop.alerts.shown.front().messageText, "修改 URL 浏览器规则");
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
}

TEST_F(Actions, RemovingARuleKeepsTheOthersInOrder) {
    storeURLRules({{"1", "a", "x"}, {"2", "b", "x"}, {"1", "c", "x"}, {"3", "d", "x"}});
    performFromItem("clearURLRule:", std::string("1"));
    EXPECT_EQ(rules(), (std::vector<URLRule>{{"2", "b", "x"}, {"3", "d", "x"}}));
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(Actions, RemovingARemovedRuleStoresTheListAndRebuilds) {
    const int writes = desktop.defaults.writes;
    performFromItem("clearURLRule:", std::string("9"));
    EXPECT_EQ(desktop.defaults.writes, writes + 1);
    EXPECT_EQ(rules().size(), 2u);
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(Actions, ButtonsActOnTheirIdentifier) {
    performFromButton("editRuleFromWindow:", "com.example.Mail");
    performFromButton("editURLRuleFromWindow:", "1");
    performFromButton("editURLRuleFromWindow:", "9");
    ASSERT_EQ(desktop.alerts.shown.size(), 2u);
    EXPECT_EQ(desktop.alerts.shown[0].messageText, "修改浏览器规则");
    EXPECT_EQ(desktop.alerts.shown[1].messageText, "修改 URL 浏览器规则");
    performFromButton("clearRuleFromWindow:", "com.example.Mail");
    performFromButton("clearURLRuleFromWindow:", "1");
    EXPECT_TRUE(controller->settings().appRules().empty());
    EXPECT_EQ(rules(), (std::vector<URLRule>{{"2", "two.example", "browser.b"}}));
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

TEST_F(Actions, DialogsOpenBySelector) {
    for (const char *selector : {"showAddURLRuleDialog", "showAddRuleDialog", "showFeedbackDialog"})
        controller->perform(selector);
    ASSERT_EQ(desktop.alerts.shown.size(), 3u);
    EXPECT_EQ(desktop.alerts.shown[0].messageText, "添加 URL 浏览器规则");
    EXPECT_EQ(desktop.alerts.shown[1].messageText, "添加 App 浏览器规则");
    EXPECT_EQ(desktop.alerts.shown[2].messageText, "建议反馈");
}

TEST_F(Actions, SecondDialogBringsTheOpenOneToTheFront) {
    desktop.alerts.alertIsOpen = true;
    for (const char *selector : {"showAddURLRuleDialog", "showAddRuleDialog", "showFeedbackDialog"})
        controller->perform(selector);
    performFromItem("editURLRule:", std::string("2"));
    performFromButton("editRuleFromWindow:", "com.example.Mail");
    EXPECT_TRUE(desktop.alerts.shown.empty());
    EXPECT_EQ(desktop.alerts.broughtToFront, 5);
}

} // namespace
} // namespace fernhop
