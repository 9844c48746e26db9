#include "app/Controller.h"

namespace fernhop {
namespace {

using Cause = PassedOver::Cause;

class Decision : public ControllerTest {
  protected:
    RoutingDecision decide(const std::string &url, std::optional<std::string> source = std::nullopt) {
        return controller->decide(Url::parse(url).value(), source);
    }
};

TEST_F(Decision, OpensNothing) {
    launch();
    EXPECT_TRUE(decide("https://docs.example/").target);
    EXPECT_TRUE(opened().empty());
    EXPECT_TRUE(desktop.log.lines.empty());
}

TEST_F(Decision, ByURLRuleHasTheRuleAndTheAppRule) {
    const URLRule rule{"1", "docs.example", "browser.b"};
    storeURLRules({rule});
    storeAppRule("com.example.Mail", "browser.a");
    launch();
    const auto decision = decide("https://docs.example/", "com.example.Mail");
    EXPECT_EQ(decision.because, RoutingReason::urlRule);
    EXPECT_EQ(decision.urlRule, rule);
    EXPECT_EQ(decision.source, "com.example.Mail");
    EXPECT_EQ(decision.appRule, "browser.a");
    EXPECT_EQ(decision.target,
              (Browser{"browser.b", "browser.b", Url::fileUrl("/Applications/browser.b.app")}));
    EXPECT_TRUE(decision.passedOver.empty());
}

TEST_F(Decision, GivesTheReasonForEachCandidateNotChosen) {
    storeURLRules({{"1", "docs.example", own}});
    storeAppRule("com.example.Mail", "browser.a");
    storeFallback("browser.gone");
    launch();
    const auto decision = decide("https://docs.example/", "com.example.Mail");
    EXPECT_EQ(decision.because, RoutingReason::firstBrowser);
    EXPECT_EQ(decision.fallback, "browser.gone");
    EXPECT_EQ(decision.passedOver,
              (std::vector<PassedOver>{{RoutingReason::urlRule, own, Cause::isFernhop},
                                       {RoutingReason::appRule, "browser.a", Cause::outranked},
                                       {RoutingReason::fallback, "browser.gone", Cause::notInstalled}}));
    EXPECT_EQ(describe(decision.passedOver[0]),
              "The URL rule's browser org.fernhop.Fernhop is Fernhop itself.");
    EXPECT_EQ(describe(decision.passedOver[1]),
              "The app rule's browser browser.a is overridden by a matching URL rule.");
    EXPECT_EQ(describe(decision.passedOver[2]), "The fallback browser browser.gone is not installed.");
}

TEST_F(Decision, ByAppRuleAndByFallback) {
    storeAppRule("com.example.Mail", "browser.b");
    storeFallback("browser.b");
    launch();
    EXPECT_EQ(decide("https://docs.example/", "com.example.Mail").because, RoutingReason::appRule);
    EXPECT_EQ(decide("https://docs.example/", "com.example.mail").because, RoutingReason::fallback);
    EXPECT_EQ(decide("https://docs.example/").because, RoutingReason::fallback);
}

TEST_F(Decision, WithoutAnyBrowserIsNone) {
    desktop.applications.remove("/Applications");
    storeFallback("browser.a");
    launch();
    const auto decision = decide("https://docs.example/");
    EXPECT_FALSE(decision.target);
    EXPECT_EQ(decision.because, RoutingReason::none);
}

TEST(RoutingReasonNames, AreThoseThatTheCommandLinePrints) {
    EXPECT_EQ(nameOf(RoutingReason::urlRule), "urlRule");
    EXPECT_EQ(nameOf(RoutingReason::appRule), "appRule");
    EXPECT_EQ(nameOf(RoutingReason::fallback), "fallback");
    EXPECT_EQ(nameOf(RoutingReason::firstBrowser), "firstBrowser");
    EXPECT_EQ(nameOf(RoutingReason::none), "none");
}

/// The router alone, with a browser list of its owner.
class RouterOperations : public testing::Test {
  protected:
    fakes::FakeDesktop desktop;
    Preferences preferences{desktop.defaults};
    BrowserCatalog catalog{desktop.workspace, desktop.applications, desktop.applications,
                           ApplicationCatalog(desktop.applications, desktop.applications,
                                              macApplicationLayout(desktop.applications))};
    std::vector<Browser> installed;
    Router router{
        {preferences, catalog, desktop.workspace, desktop.applications, desktop.applications, installed}};

    void list(const std::string &bundleID) {
        installed.push_back({"Listed " + bundleID, bundleID, Url::fileUrl("/Listed/" + bundleID + ".app")});
    }

    void storeFallback(const std::string &bundleID) {
        desktop.defaults.stored.insert_or_assign(std::string(settingsKey::routingFallbackBrowserID),
                                                 PropertyValue{bundleID});
    }
};

TEST_F(RouterOperations, BrowserListIsSearchedFirst) {
    list("browser.a");
    desktop.installBrowser("browser.a");
    EXPECT_EQ(router.browserForRouting("browser.a")->name, "Listed browser.a");
    EXPECT_EQ(router.browserForRouting("browser.a")->appURL.path(), "/Listed/browser.a.app");
}

TEST_F(RouterOperations, SystemIsSearchedNext) {
    desktop.installApplication("com.example.Notes");
    EXPECT_EQ(router.browserForRouting("com.example.Notes")->name, "com.example.Notes");
    EXPECT_FALSE(router.browserForRouting("com.example.notes"));
    EXPECT_FALSE(router.browserForRouting(""));
}

/// A session in which an application is installed between the first and the second lookup.
class InstallingWorkspace : public fakes::FakeWorkspace {
  public:
    using FakeWorkspace::FakeWorkspace;
    mutable int looks = 0;

    std::optional<Url> urlForApplicationWithBundleIdentifier(const std::string &) const override {
        return ++looks < 2 ? std::nullopt : std::optional(Url::fileUrl("/opt/New one.app"));
    }
};

TEST(RouterWithoutACatalogEntry, SearchesTheSessionLast) {
    fakes::FakeDesktop desktop;
    const InstallingWorkspace workspace(desktop.applications, desktop.workspaceCenter);
    const ApplicationCatalog applications(desktop.applications, desktop.applications, {});
    const BrowserCatalog catalog(workspace, desktop.applications, desktop.applications, applications);
    const Preferences preferences(desktop.defaults);
    const std::vector<Browser> none;
    const Router router({preferences, catalog, workspace, desktop.applications, desktop.applications, none});
    EXPECT_EQ(router.browserForRouting("new"),
              (Browser{"New one.app", "new", Url::fileUrl("/opt/New one.app")}));
}

TEST_F(RouterOperations, FallbackIsValidWhenItCanBeFoundAndIsNotFernhop) {
    list("browser.a");
    storeFallback("browser.gone");
    EXPECT_EQ(router.validFallbackBrowserID(), "browser.a");
    desktop.installApplication("com.example.Notes");
    storeFallback("com.example.Notes");
    EXPECT_EQ(router.validFallbackBrowserID(), "com.example.Notes");
    storeFallback("org.fernhop.Fernhop");
    desktop.installBrowser("org.fernhop.Fernhop");
    EXPECT_EQ(router.validFallbackBrowserID(), "browser.a");
}

TEST_F(RouterOperations, FirstListedBrowserThatIsNotFernhopIsTheLastResort) {
    list("org.fernhop.Fernhop");
    EXPECT_FALSE(router.validFallbackBrowserID());
    EXPECT_FALSE(router.resolvedTargetBrowser(std::nullopt));
    list("browser.b");
    EXPECT_EQ(router.validFallbackBrowserID(), "browser.b");
    EXPECT_EQ(router.resolvedTargetBrowser(std::nullopt)->bundleID, "browser.b");
}

TEST_F(RouterOperations, UnusableRuleBrowserLeadsToTheFallback) {
    list("browser.a");
    list("browser.b");
    storeFallback("browser.b");
    EXPECT_EQ(router.resolvedTargetBrowser("browser.a")->bundleID, "browser.a");
    EXPECT_EQ(router.resolvedTargetBrowser("browser.gone")->bundleID, "browser.b");
    EXPECT_EQ(router.resolvedTargetBrowser("org.fernhop.Fernhop")->bundleID, "browser.b");
    EXPECT_EQ(router.resolvedTargetBrowser(std::nullopt)->bundleID, "browser.b");
}

} // namespace
} // namespace fernhop
