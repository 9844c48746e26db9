#include "app/Controller.h"
#include "catalog/OwnBundleID.h"

namespace fernhop {
namespace {

class Routing : public ControllerTest {};

TEST_F(Routing, FirstMatchingURLRuleInListOrderWins) {
    storeURLRules({{"1", "nothing.example", "browser.a"},
                   {"2", "docs.example", "browser.b"},
                   {"3", "https://docs.example/*", "browser.a"}});
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
}

TEST_F(Routing, URLIsOpenedAloneAndItsBrowserIsActivated) {
    launch();
    route("https://docs.example/a%20b?q=%F0#f");
    ASSERT_EQ(desktop.workspace.opened.size(), 1u);
    const auto &call = desktop.workspace.opened.front();
    EXPECT_EQ(call.urls, std::vector{Url::parse("https://docs.example/a%20b?q=%F0#f").value()});
    EXPECT_EQ(call.applicationUrl.path(), "/Applications/browser.a.app");
    EXPECT_TRUE(call.configuration.activates);
}

TEST_F(Routing, URLRulePrecedesTheAppRule) {
    storeURLRules({{"1", "docs.example", "browser.b"}});
    storeAppRule("com.example.Mail", "browser.a");
    desktop.workspace.front = running("com.example.Mail");
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
}

TEST_F(Routing, AppRuleOfTheSourceIsUsedWhenNoURLRuleMatches) {
    storeURLRules({{"1", "docs.example", "browser.a"}, {"2", "   ", "browser.a"}});
    storeAppRule("com.example.Mail", "browser.b");
    desktop.workspace.front = running("com.example.Mail");
    launch();
    route("https://other.example/");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
}

TEST_F(Routing, AppRulesAreIgnoredWhenTheSourceIsUnknown) {
    storeAppRule("com.example.Mail", "browser.b");
    launch();
    route("https://other.example/");
    EXPECT_EQ(lastTarget(), "/Applications/browser.a.app");
}

TEST_F(Routing, MatchedRuleWithAMissingBrowserGoesToTheFallbackNotToTheAppRule) {
    desktop.installBrowser("browser.c");
    storeURLRules({{"1", "docs.example", "browser.gone"}});
    storeAppRule("com.example.Mail", "browser.b");
    storeFallback("browser.c");
    desktop.workspace.front = running("com.example.Mail");
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.c.app");
}

TEST_F(Routing, RulesNamingFernhopNeverSendALinkBackToIt) {
    desktop.installBrowser(own);
    storeURLRules({{"1", "docs.example", own}});
    storeAppRule("com.example.Mail", own);
    storeFallback(own);
    desktop.workspace.front = running("com.example.Mail");
    launch();
    route("https://docs.example/x");
    route("https://other.example/x");
    EXPECT_EQ(opened(), (std::vector<std::pair<std::string, std::string>>{
                            {"https://docs.example/x", "/Applications/browser.a.app"},
                            {"https://other.example/x", "/Applications/browser.a.app"}}));
}

TEST_F(Routing, OwnIdentifierIsReadEachTimeAndHasACompiledInDefault) {
    storeURLRules({{"1", "docs.example", "browser.b"}});
    launch();
    desktop.applications.mainIdentifier = "browser.b";
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.a.app");
    desktop.applications.mainIdentifier = std::nullopt;
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
    EXPECT_EQ(ownBundleID(desktop.applications), own);
}

TEST_F(Routing, StoredFallbackOpensLinksWithoutARule) {
    storeFallback("browser.b");
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
}

TEST_F(Routing, UninstalledFallbackIsSkippedAndStaysStored) {
    storeFallback("browser.gone");
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.a.app");
    EXPECT_EQ(fallback(), "browser.gone");
}

TEST_F(Routing, FallbackMayBeAnInstalledApplicationThatIsNotABrowser) {
    desktop.installApplication("com.example.Notes");
    storeFallback("com.example.Notes");
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/com.example.Notes.app");
}

TEST_F(Routing, AppRuleMayNameAnInstalledApplicationThatIsNotABrowser) {
    desktop.installApplication("com.example.Notes");
    storeAppRule("com.example.Mail", "com.example.Notes");
    desktop.workspace.front = running("com.example.Mail");
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/com.example.Notes.app");
}

TEST_F(Routing, BrowserInstalledAfterTheLastScanIsFound) {
    storeURLRules({{"1", "docs.example", "browser.new"}});
    launch();
    desktop.installBrowser("browser.new");
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.new.app");
}

TEST_F(Routing, IdentifiersAreComparedExactly) {
    storeURLRules({{"1", "docs.example", "Browser.B"}});
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.a.app");
}

TEST_F(Routing, IdentifierThatDiffersInCaseFromFernhopsIsATarget) {
    desktop.installApplication("org.fernhop.fernhop");
    storeURLRules({{"1", "docs.example", "org.fernhop.fernhop"}});
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/org.fernhop.fernhop.app");
}

TEST_F(Routing, RulesAreReadForEachLink) {
    launch();
    route("https://docs.example/1");
    storeURLRules({{"1", "docs.example", "browser.b"}});
    route("https://docs.example/2");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
}

TEST_F(Routing, UnreadableSettingsDoNotAffectTheOthers) {
    store(settingsKey::urlRules, {PropertyData{"[{\"id\":1}]"}});
    store(settingsKey::appRules, {PropertyDictionary{{"com.example.Mail", {"browser.a"}}, {"x", {true}}}});
    storeFallback("browser.b");
    desktop.workspace.front = running("com.example.Mail");
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
}

TEST_F(Routing, SourceIsKeptBetweenLinks) {
    storeAppRule("com.example.Mail", "browser.b");
    desktop.workspace.front = running("com.example.Mail");
    launch();
    route("https://docs.example/1");
    route("https://docs.example/2");
    EXPECT_EQ(opened(), (std::vector<std::pair<std::string, std::string>>{
                            {"https://docs.example/1", "/Applications/browser.b.app"},
                            {"https://docs.example/2", "/Applications/browser.b.app"}}));
}

class RoutingWithoutBrowsers : public ControllerTest {
  protected:
    RoutingWithoutBrowsers() {
        desktop.applications.remove("/Applications/browser.a.app");
        desktop.applications.remove("/Applications/browser.b.app");
    }
};

TEST_F(RoutingWithoutBrowsers, LinkIsDroppedWithOneLineAndOneBeep) {
    launch();
    route("https://docs.example/100%25");
    EXPECT_TRUE(opened().empty());
    EXPECT_EQ(desktop.log.lines, std::vector<std::string>{
                                     "Fernhop: No valid target browser for URL https://docs.example/100%25. "
                                     "source=unknown urlRule=none appRule=none fallback=none"});
    EXPECT_EQ(desktop.sound.beeps, 1);
}

TEST_F(RoutingWithoutBrowsers, LineIsWrittenBeforeTheBeep) {
    launch();
    desktop.sound.atBeep = [&] { EXPECT_EQ(desktop.log.lines.size(), 1u); };
    route("https://docs.example/x");
    EXPECT_EQ(desktop.sound.beeps, 1);
}

TEST_F(RoutingWithoutBrowsers, LineListsAllCandidates) {
    storeURLRules({{"1", "  docs.example ", "browser.gone"}});
    storeAppRule("com.example.Mail", "browser.lost");
    storeFallback(own);
    desktop.workspace.front = running("com.example.Mail");
    launch();
    route("https://docs.example/x");
    EXPECT_EQ(desktop.log.lines,
              std::vector<std::string>{"Fernhop: No valid target browser for URL https://docs.example/x. "
                                       "source=com.example.Mail urlRule=  docs.example  appRule=browser.lost "
                                       "fallback=org.fernhop.Fernhop"});
}

TEST_F(RoutingWithoutBrowsers, BrowserListIsRefreshedOnceWhenItIsEmpty) {
    launch();
    const int scans = desktop.applications.scans;
    route("https://docs.example/x");
    EXPECT_EQ(desktop.applications.scans,
              scans + 4); // two folders, scanned for applications and for browsers
}

TEST_F(RoutingWithoutBrowsers, RefreshBeforeRoutingFindsANewBrowser) {
    launch();
    desktop.installBrowser("browser.new");
    route("https://docs.example/x");
    EXPECT_EQ(lastTarget(), "/Applications/browser.new.app");
}

TEST_F(RoutingWithoutBrowsers, FernhopAloneIsNotATarget) {
    desktop.installBrowser(own);
    launch();
    route("https://docs.example/x");
    EXPECT_TRUE(opened().empty());
    EXPECT_EQ(desktop.sound.beeps, 1);
}

TEST_F(Routing, NonEmptyListIsNotRefreshed) {
    launch();
    const int scans = desktop.applications.scans;
    route("https://docs.example/x");
    EXPECT_EQ(desktop.applications.scans, scans);
}

TEST_F(Routing, FailedOpenCausesOneLineOneBeepAndNoRetry) {
    launch();
    desktop.workspace.failure = OpenError{"The program is gone."};
    desktop.sound.atBeep = [&] { EXPECT_EQ(desktop.log.lines.size(), 1u); };
    route("https://docs.example/x");
    EXPECT_EQ(desktop.log.lines,
              std::vector<std::string>{"Fernhop: Failed to open https://docs.example/x with "
                                       "browser.a: The program is gone."});
    EXPECT_EQ(desktop.sound.beeps, 1);
    EXPECT_EQ(opened().size(), 1u);
}

TEST_F(Routing, SuccessfulOpenIsSilent) {
    launch();
    route("https://docs.example/x");
    EXPECT_TRUE(desktop.log.lines.empty());
    EXPECT_EQ(desktop.sound.beeps, 0);
}

TEST_F(Routing, LateFailureReportsTheBrowserOfItsOwnLink) {
    storeURLRules({{"1", "one.example", "browser.a"}, {"2", "two.example", "browser.b"}});
    launch();
    desktop.workspace.holdsCompletions = true;
    desktop.workspace.failure = OpenError{"late"};
    route("https://one.example/");
    route("https://two.example/");
    controller.reset(); // the completion uses no state of the controller
    for (const auto &complete : desktop.workspace.held)
        complete();
    EXPECT_EQ(desktop.log.lines, (std::vector<std::string>{
                                     "Fernhop: Failed to open https://one.example/ with browser.a: late",
                                     "Fernhop: Failed to open https://two.example/ with browser.b: late"}));
}

} // namespace
} // namespace fernhop
