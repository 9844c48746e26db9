#include "app/Controller.h"
#include "platform/ui/Button.h"
#include "platform/ui/PopUpButton.h"

namespace fernhop {
namespace {

using Calls = std::vector<std::pair<std::string, std::string>>;

/// Starts with the browsers "browser.a" and "browser.b" installed, no handler set and nothing stored.
class DefaultHandlers : public ControllerTest {
  protected:
    DefaultHandlers() {
        launch();
        desktop.statusBar.menusSet = 0;
    }

    DefaultHandlerControl &control() { return controller->defaultHandlers(); }
    const Calls &calls() const { return desktop.launchServices.calls; }
    static Calls bothTo(const std::string &bundleID) { return {{"http", bundleID}, {"https", bundleID}}; }

    void withoutBrowsers() {
        desktop.applications.remove("/Applications");
        controller->refreshBrowsers();
    }

    void switchTo(ui::RepresentedObject object) {
        ui::MenuItem item;
        item.representedObject = std::move(object);
        controller->perform("switchSystemDefaultBrowser:", {.sender = &item});
    }

    void choose(ui::RepresentedObject object, bool selected = true) {
        ui::PopUpButton popUp;
        ui::MenuItem item;
        item.representedObject = std::move(object);
        popUp.setItems({std::move(item)});
        if (!selected)
            popUp.selectItem(1);
        controller->perform("updateDefaultBrowserFromWindow:", {.sender = &popUp});
    }

    bool restores() const { return desktop.defaults.boolForKey(settingsKey::restoresDefaultBrowserOnQuit); }
};

TEST_F(DefaultHandlers, RoutingIsOnExactlyWhenFernhopHandlesHttps) {
    auto &handlers = desktop.launchServices.handlers;
    EXPECT_FALSE(control().isRoutingEnabled());
    handlers = {{"http", own}, {"https", "browser.b"}};
    EXPECT_FALSE(control().isRoutingEnabled());
    handlers = {{"http", own}};
    EXPECT_FALSE(control().isRoutingEnabled());
    handlers = {{"http", "browser.b"}, {"https", own}};
    EXPECT_TRUE(control().isRoutingEnabled());
    handlers = {{"https", "org.fernhop.fernhop"}};
    EXPECT_FALSE(control().isRoutingEnabled());
}

TEST_F(DefaultHandlers, OwnIdentifierIsReadAndComparedExactlyAtEachUse) {
    auto &identifier = desktop.applications.mainIdentifier;
    for (const char *handler : {own, "browser.a", "ORG.fernhop.Fernhop"})
        for (const char *current : {own, "browser.a", "ORG.fernhop.Fernhop"}) {
            setHandlers(handler);
            identifier = current;
            const bool isFernhop = std::string(handler) == current;
            EXPECT_EQ(control().isRoutingEnabled(), isFernhop) << handler << " " << current;
            EXPECT_EQ(control().read().routingEnabled, isFernhop) << handler << " " << current;
            desktop.launchServices.calls.clear();
            storeFallback("browser.b");
            control().enableAppRouting();
            EXPECT_EQ(calls(), bothTo(isFernhop ? "browser.b" : current));
        }
}

TEST_F(DefaultHandlers, BrowserThatDiffersInCaseFromFernhopIsAFallbackChoice) {
    desktop.installBrowser("ORG.fernhop.Fernhop");
    desktop.applications.remove("/Applications/browser.a.app");
    desktop.applications.remove("/Applications/browser.b.app");
    controller->refreshBrowsers();
    EXPECT_EQ(control().effectiveDefaultBrowserID(), "ORG.fernhop.Fernhop");
}

TEST_F(DefaultHandlers, EffectiveDefaultIsTheSystemsWhileRoutingIsOff) {
    setHandlers("browser.gone");
    storeFallback("browser.a");
    EXPECT_EQ(control().effectiveDefaultBrowserID(), "browser.gone");
}

TEST_F(DefaultHandlers, EffectiveDefaultIsTheFallbackChoiceWhileRoutingIsOnOrNothingIsSet) {
    EXPECT_EQ(control().effectiveDefaultBrowserID(), "browser.a");
    setHandlers(own);
    EXPECT_EQ(control().effectiveDefaultBrowserID(), "browser.a");
    storeFallback("browser.gone");
    EXPECT_EQ(control().effectiveDefaultBrowserID(), "browser.gone");
    desktop.launchServices.handlers.clear();
    EXPECT_EQ(control().effectiveDefaultBrowserID(), "browser.gone");
}

TEST_F(DefaultHandlers, EffectiveDefaultMayBeNothing) {
    withoutBrowsers();
    EXPECT_FALSE(control().effectiveDefaultBrowserID());
}

TEST_F(DefaultHandlers, TurningOnStoresThePreviousDefaultAndTurningOffRestoresIt) {
    setHandlers("browser.b");
    storeFallback("browser.a");
    controller->perform("enableAppRouting");
    EXPECT_EQ(fallback(), "browser.b");
    EXPECT_EQ(calls(), bothTo(own));
    EXPECT_EQ(desktop.statusBar.menusSet, 1);

    desktop.launchServices.calls.clear();
    controller->perform("enableAppRouting");
    EXPECT_EQ(calls(), bothTo("browser.b"));
    EXPECT_EQ(fallback(), "browser.b");
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

TEST_F(DefaultHandlers, EachActionStoresFirstThenSetsBothHandlersAndShowsTheMenuLast) {
    setHandlers("browser.b");
    recordSteps();
    controller->perform("enableAppRouting");
    EXPECT_EQ(steps(), (Steps{"routingFallbackBrowserID", "http org.fernhop.Fernhop",
                              "https org.fernhop.Fernhop", "menu"}));
    choose(std::string("browser.b"));
    EXPECT_EQ(steps(), (Steps{"routingFallbackBrowserID", "menu"}));
    controller->perform("enableAppRouting");
    EXPECT_EQ(steps(), (Steps{"http browser.b", "https browser.b", "menu"}));
    const Steps switching{"routingFallbackBrowserID", "http browser.a", "https browser.a", "menu"};
    switchTo(std::string("browser.a"));
    EXPECT_EQ(steps(), switching);
    choose(std::string("browser.a"));
    EXPECT_EQ(steps(), switching);
    controller->perform("toggleRestoreDefaultBrowserOnQuit:");
    EXPECT_EQ(steps(), (Steps{"restoresDefaultBrowserOnQuit", "menu"}));
}

TEST_F(DefaultHandlers, TurningOnWithNoHandlerKeepsAStoredFallback) {
    storeFallback("browser.b");
    control().enableAppRouting();
    EXPECT_EQ(fallback(), "browser.b");
    EXPECT_EQ(calls(), bothTo(own));
}

TEST_F(DefaultHandlers, TurningOnWithNoHandlerAndNoFallbackStoresTheFirstBrowser) {
    control().enableAppRouting();
    EXPECT_EQ(fallback(), "browser.a");
}

TEST_F(DefaultHandlers, FallbackChoiceIsNeverFernhopButTurningOnStoresTheFirstBrowserAsItIs) {
    desktop.applications.mainIdentifier = "browser.a"; // after the list was made
    EXPECT_EQ(control().effectiveDefaultBrowserID(), "browser.b");
    control().enableAppRouting();
    EXPECT_EQ(fallback(), "browser.a");
    EXPECT_EQ(calls(), bothTo("browser.a"));
}

TEST_F(DefaultHandlers, TurningOffNeverChoosesFernhopFromTheBrowserList) {
    desktop.applications.mainIdentifier = "browser.a";
    setHandlers("browser.a");
    control().disableAppRouting();
    EXPECT_EQ(calls(), bothTo("browser.b"));
}

TEST_F(DefaultHandlers, TurningOnWithNoHandlerReplacesAFallbackThatIsNotText) {
    store(settingsKey::routingFallbackBrowserID, {PropertyArray{}});
    control().enableAppRouting();
    EXPECT_EQ(fallback(), "browser.a");
}

TEST_F(DefaultHandlers, TurningOnWithNothingAtAllRemovesTheKey) {
    withoutBrowsers();
    store(settingsKey::routingFallbackBrowserID, {PropertyArray{}});
    control().enableAppRouting();
    EXPECT_FALSE(desktop.defaults.stored.contains(settingsKey::routingFallbackBrowserID));
    EXPECT_EQ(calls(), bothTo(own));
}

TEST_F(DefaultHandlers, TurningOffWithNoBrowserBeepsAndStaysOn) {
    withoutBrowsers();
    setHandlers(own);
    controller->perform("enableAppRouting");
    EXPECT_EQ(desktop.sound.beeps, 1);
    EXPECT_TRUE(control().isRoutingEnabled());
    EXPECT_TRUE(calls().empty());
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
}

TEST_F(DefaultHandlers, TurningOffTakesTheFirstBrowserWhenNoFallbackIsStored) {
    setHandlers(own);
    control().disableAppRouting();
    EXPECT_EQ(calls(), bothTo("browser.a"));
    EXPECT_FALSE(fallback());
}

TEST_F(DefaultHandlers, TurningOffRestoresEvenAnUninstalledBrowser) {
    storeFallback("browser.gone");
    setHandlers(own);
    control().disableAppRouting();
    EXPECT_EQ(calls(), bothTo("browser.gone"));
    EXPECT_EQ(fallback(), "browser.gone");
}

TEST_F(DefaultHandlers, SwitchingTheSystemDefaultLeavesRouting) {
    setHandlers(own);
    switchTo(std::string("browser.b"));
    EXPECT_EQ(fallback(), "browser.b");
    EXPECT_EQ(calls(), bothTo("browser.b"));
    EXPECT_FALSE(control().isRoutingEnabled());
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(DefaultHandlers, SwitchingWhileRoutingIsOffSetsBothToo) {
    setHandlers("browser.a");
    switchTo(std::string("browser.b"));
    EXPECT_EQ(fallback(), "browser.b");
    EXPECT_EQ(calls(), bothTo("browser.b"));
}

TEST_F(DefaultHandlers, SwitchingWithoutATextDoesNothing) {
    switchTo({});
    switchTo(std::shared_ptr<const Object>());
    EXPECT_TRUE(calls().empty());
    EXPECT_FALSE(fallback());
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
}

TEST_F(DefaultHandlers, PopUpChangesOnlyTheFallbackWhileRoutingIsOn) {
    setHandlers(own);
    choose(std::string("browser.b"));
    EXPECT_EQ(fallback(), "browser.b");
    EXPECT_TRUE(calls().empty());
    EXPECT_TRUE(control().isRoutingEnabled());
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(DefaultHandlers, PopUpSwitchesTheSystemWhileRoutingIsOff) {
    setHandlers("browser.a");
    choose(std::string("browser.b"));
    EXPECT_EQ(fallback(), "browser.b");
    EXPECT_EQ(calls(), bothTo("browser.b"));
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(DefaultHandlers, PopUpWithoutASelectedTextDoesNothing) {
    choose({});
    choose(std::string("browser.b"), false);
    EXPECT_TRUE(calls().empty());
    EXPECT_FALSE(fallback());
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
}

TEST_F(DefaultHandlers, RestoreFollowsACheckBox) {
    ui::Button checkBox;
    checkBox.state = ui::ControlState::on;
    for (int press = 0; press < 2; ++press) {
        controller->perform("toggleRestoreDefaultBrowserOnQuit:", {.sender = &checkBox});
        EXPECT_TRUE(restores());
    }
    checkBox.state = ui::ControlState::off;
    controller->perform("toggleRestoreDefaultBrowserOnQuit:", {.sender = &checkBox});
    EXPECT_FALSE(restores());
    EXPECT_EQ(desktop.statusBar.menusSet, 3);
}

TEST_F(DefaultHandlers, RestoreBecomesTheOppositeOfAMenuItem) {
    ui::MenuItem item;
    for (int press = 0; press < 2; ++press) {
        controller->perform("toggleRestoreDefaultBrowserOnQuit:", {.sender = &item});
        EXPECT_TRUE(restores());
    }
    item.state = ui::ControlState::on;
    controller->perform("toggleRestoreDefaultBrowserOnQuit:", {.sender = &item});
    EXPECT_FALSE(restores());
}

TEST_F(DefaultHandlers, RestoreIsNegatedForAnyOtherSender) {
    const ui::PopUpButton other;
    controller->perform("toggleRestoreDefaultBrowserOnQuit:", {.sender = &other});
    EXPECT_TRUE(restores());
    controller->perform("toggleRestoreDefaultBrowserOnQuit:");
    EXPECT_FALSE(restores());
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

class RestoreOnQuit : public DefaultHandlers {
  protected:
    RestoreOnQuit() {
        store(settingsKey::restoresDefaultBrowserOnQuit, {true});
        storeFallback("browser.b");
        setHandlers(own);
    }

    const Calls &callsAtQuit() {
        EXPECT_EQ(controller->applicationShouldTerminate(), TerminateReply::now);
        return calls();
    }
};

TEST_F(RestoreOnQuit, RestoresBothSchemesWithoutARebuild) {
    EXPECT_EQ(callsAtQuit(), bothTo("browser.b"));
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
}

TEST_F(RestoreOnQuit, DoesNothingWhenNotWanted) {
    store(settingsKey::restoresDefaultBrowserOnQuit, {false});
    EXPECT_TRUE(callsAtQuit().empty());
}

TEST_F(RestoreOnQuit, DoesNothingWhenTheSettingIsAbsent) {
    desktop.defaults.stored.erase(std::string(settingsKey::restoresDefaultBrowserOnQuit));
    EXPECT_TRUE(callsAtQuit().empty());
}

TEST_F(RestoreOnQuit, DoesNothingWhenAnotherBrowserIsTheDefault) {
    setHandlers("browser.a");
    EXPECT_TRUE(callsAtQuit().empty());
}

TEST_F(RestoreOnQuit, DoesNothingWhenNoHandlerIsSet) {
    desktop.launchServices.handlers.clear();
    EXPECT_TRUE(callsAtQuit().empty());
}

TEST_F(RestoreOnQuit, DoesNothingWhenTheFallbackIsFernhop) {
    storeFallback(own);
    EXPECT_TRUE(callsAtQuit().empty());
}

TEST_F(RestoreOnQuit, OwnIdentifierIsReadAndComparedExactly) {
    for (const char *current : {own, "ORG.fernhop.Fernhop", "browser.a"}) {
        desktop.applications.mainIdentifier = current;
        setHandlers(current);
        storeFallback(current);
        EXPECT_TRUE(callsAtQuit().empty()) << current;
    }
    setHandlers("browser.a");
    storeFallback("BROWSER.a");
    EXPECT_EQ(callsAtQuit(), bothTo("BROWSER.a"));
}

TEST_F(RestoreOnQuit, DoesNothingWithoutABrowser) {
    desktop.defaults.stored.erase(std::string(settingsKey::routingFallbackBrowserID));
    withoutBrowsers();
    EXPECT_TRUE(callsAtQuit().empty());
}

TEST_F(RestoreOnQuit, TakesTheFirstBrowserWhenNoFallbackIsStored) {
    desktop.defaults.stored.erase(std::string(settingsKey::routingFallbackBrowserID));
    EXPECT_EQ(callsAtQuit(), bothTo("browser.a"));
}

TEST_F(RestoreOnQuit, RestoresEvenAnUninstalledBrowser) {
    storeFallback("browser.gone");
    EXPECT_EQ(callsAtQuit(), bothTo("browser.gone"));
}

TEST_F(DefaultHandlers, RefusedChangeIsNotReported) {
    setHandlers("browser.b");
    desktop.launchServices.refuses = true;
    control().enableAppRouting();
    EXPECT_EQ(calls(), bothTo(own));
    EXPECT_EQ(desktop.sound.beeps, 0);
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
    EXPECT_FALSE(control().isRoutingEnabled());
}

} // namespace
} // namespace fernhop
