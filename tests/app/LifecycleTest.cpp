#include "app/Controller.h"
#include "statusitem/MenuText.h"

#include <algorithm>
#include <utility>

namespace fernhop {
namespace {

class Lifecycle : public ControllerTest {};

TEST_F(Lifecycle, ConstructionOnlyRegistersForLinks) {
    construct();
    EXPECT_TRUE(desktop.links.handler);
    EXPECT_EQ(desktop.links.eventClass, 0x4755524Cu);
    EXPECT_EQ(desktop.links.eventID, 0x4755524Cu);
    EXPECT_FALSE(desktop.application.policy);
    EXPECT_TRUE(desktop.workspaceCenter.observers.empty());
    EXPECT_TRUE(controller->browsers().empty());
    EXPECT_TRUE(controller->applications().empty());
    EXPECT_EQ(controller->sourceTracker().lastSourceApplication(), nullptr);
    EXPECT_FALSE(controller->linkIntake().didFinishLaunching());
    EXPECT_TRUE(controller->linkIntake().pendingURLs().empty());
    EXPECT_EQ(desktop.statusBar.length, -2);
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
    EXPECT_EQ(desktop.statusBar.imagesSet, 0);
    EXPECT_EQ(desktop.applications.scans, 0);
}

TEST_F(Lifecycle, StartUpRunsItsStepsInOrder) {
    desktop.workspace.front = running("com.example.Mail");
    construct();
    desktop.links.deliver("https://docs.example/");
    desktop.workspaceCenter.atObserver = [&] {
        EXPECT_EQ(desktop.application.policy, ActivationPolicy::accessory);
        EXPECT_EQ(controller->sourceTracker().lastSourceApplication(), nullptr);
        EXPECT_TRUE(desktop.distributedCenter.observers.empty());
    };
    desktop.distributedCenter.atObserver = [&] {
        EXPECT_EQ(desktop.workspaceCenter.observers.size(), 1u);
        EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "com.example.Mail");
        EXPECT_EQ(desktop.applications.scans, 0);
    };
    desktop.statusBar.atMenu = [&] {
        EXPECT_EQ(desktop.application.policy, ActivationPolicy::accessory);
        EXPECT_EQ(desktop.workspaceCenter.observers.size(), 1u);
        EXPECT_EQ(desktop.workspaceCenter.observers.front().first, didActivateApplicationNotification);
        EXPECT_EQ(desktop.distributedCenter.observers.size(), 1u);
        EXPECT_EQ(desktop.distributedCenter.observers.front().first,
                  "AppleInterfaceThemeChangedNotification");
        EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "com.example.Mail");
        EXPECT_EQ(controller->browsers().size(), 2u);
        EXPECT_EQ(controller->applications().size(), 2u);
        EXPECT_FALSE(controller->linkIntake().didFinishLaunching());
        EXPECT_TRUE(opened().empty());
    };
    controller->applicationDidFinishLaunching();
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
    EXPECT_TRUE(controller->linkIntake().didFinishLaunching());
    EXPECT_EQ(opened().size(), 1u);
}

TEST_F(Lifecycle, LinksBeforeLaunchAreRoutedInOrderAfterwards) {
    construct();
    for (const char *link : {"https://one.example/", "https://two.example/", "https://one.example/"})
        desktop.links.deliver(link);
    EXPECT_EQ(controller->linkIntake().pendingURLs().size(), 3u);
    EXPECT_TRUE(opened().empty());
    controller->applicationDidFinishLaunching();
    EXPECT_EQ(opened(), (std::vector<std::pair<std::string, std::string>>{
                            {"https://one.example/", "/Applications/browser.a.app"},
                            {"https://two.example/", "/Applications/browser.a.app"},
                            {"https://one.example/", "/Applications/browser.a.app"}}));
    EXPECT_TRUE(controller->linkIntake().pendingURLs().empty());
}

TEST_F(Lifecycle, LinkAfterLaunchIsRoutedAtOnce) {
    launch();
    desktop.links.deliver("https://docs.example/");
    EXPECT_EQ(opened().size(), 1u);
    EXPECT_TRUE(controller->linkIntake().pendingURLs().empty());
}

TEST_F(Lifecycle, LinkThatArrivesWhileTheMenuIsBuiltIsQueued) {
    construct();
    desktop.links.deliver("https://one.example/");
    desktop.links.deliver("https://two.example/");
    desktop.statusBar.atMenu = [&] { desktop.links.deliver("https://three.example/"); };
    controller->applicationDidFinishLaunching();
    ASSERT_EQ(opened().size(), 3u);
    EXPECT_EQ(opened().back().first, "https://three.example/");
}

TEST_F(Lifecycle, LinkThatArrivesWhileTheQueuedOnesAreRoutedIsRoutedAtOnce) {
    construct();
    desktop.links.deliver("https://one.example/");
    bool isDelivered = false;
    desktop.workspace.failure = OpenError{"The program is gone."}; // so that the beep tells when it is routed
    desktop.sound.atBeep = [&] {
        EXPECT_TRUE(controller->linkIntake().didFinishLaunching());
        if (!std::exchange(isDelivered, true))
            desktop.links.deliver("https://two.example/");
    };
    controller->applicationDidFinishLaunching();
    EXPECT_EQ(opened().size(), 2u);
    EXPECT_TRUE(controller->linkIntake().pendingURLs().empty());
}

TEST_F(Lifecycle, MalformedEventsAreIgnoredSilently) {
    launch();
    desktop.links.deliver(LinkEventDescriptor{});
    desktop.links.deliver(LinkEventDescriptor{std::nullopt, {{directObjectKeyword, {}}}});
    desktop.links.deliver(LinkEventDescriptor{std::nullopt, {{0x41424344, {"https://docs.example/", {}}}}});
    desktop.links.deliver("");
    desktop.links.deliver("no link at all");
    EXPECT_TRUE(opened().empty());
    EXPECT_TRUE(desktop.log.lines.empty());
    EXPECT_EQ(desktop.sound.beeps, 0);
}

TEST_F(Lifecycle, ReplyIsNotChanged) {
    launch();
    desktop.links.deliver("https://docs.example/");
    ASSERT_EQ(desktop.links.replies.size(), 1u);
    EXPECT_FALSE(desktop.links.replies.front().stringValue);
    EXPECT_TRUE(desktop.links.replies.front().parameters.empty());
}

TEST_F(Lifecycle, AnySchemeIsRouted) {
    launch();
    desktop.links.deliver("mailto:ada@docs.example");
    EXPECT_EQ(opened().size(), 1u);
}

TEST_F(Lifecycle, FernhopInFrontAtLaunchIsNotTheSource) {
    desktop.workspace.front = running(own);
    launch();
    EXPECT_EQ(controller->sourceTracker().lastSourceApplication(), nullptr);
}

TEST_F(Lifecycle, ApplicationWithoutIdentifierIsTheSourceOnlyAtLaunch) {
    const auto nameless = running(std::nullopt);
    desktop.workspace.front = nameless;
    launch();
    EXPECT_EQ(controller->sourceTracker().lastSourceApplication(), nameless);
    EXPECT_FALSE(controller->sourceTracker().sourceBundleID());

    desktop.workspace.activate(running("com.example.Mail"));
    desktop.workspace.activate(nameless);
    EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "com.example.Mail");
}

TEST_F(Lifecycle, ActivationChangesTheSourceAndRebuildsTheMenu) {
    launch();
    desktop.workspace.activate(running("com.example.Mail"));
    EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "com.example.Mail");
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

TEST_F(Lifecycle, EachActivationOfTheSameApplicationRebuildsTheMenu) {
    launch();
    rebuilds();
    desktop.workspace.activate(running("com.example.Mail"));
    desktop.workspace.activate(running("com.example.Mail"));
    EXPECT_EQ(rebuilds(), 2);
}

TEST_F(Lifecycle, ActivationOfAnApplicationWithoutIdentifierIsIgnored) {
    launch();
    desktop.workspace.activate(running("com.example.Mail"));
    rebuilds();
    desktop.workspace.activate(running(std::nullopt));
    EXPECT_EQ(rebuilds(), 0);
    EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "com.example.Mail");
}

TEST_F(Lifecycle, IdentifierThatDiffersInCaseFromFernhopsIsASource) {
    desktop.workspace.front = running("org.fernhop.fernhop");
    launch();
    EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "org.fernhop.fernhop");
    desktop.workspace.activate(running("com.example.Mail"));
    rebuilds();
    desktop.workspace.activate(running("org.fernhop.fernhop"));
    EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "org.fernhop.fernhop");
    EXPECT_EQ(rebuilds(), 1);
}

TEST_F(Lifecycle, OwnIdentifierIsReadForEachSourceAndEachList) {
    auto &identifier = desktop.applications.mainIdentifier;
    construct();
    identifier = "com.example.Mail";
    desktop.workspace.front = running("com.example.Mail");
    controller->applicationDidFinishLaunching();
    desktop.workspace.activate(running("com.example.Mail"));
    EXPECT_EQ(controller->sourceTracker().lastSourceApplication(), nullptr);

    identifier = "com.example.Chat";
    desktop.workspace.activate(running("com.example.Mail"));
    desktop.workspace.activate(running("com.example.Chat"));
    EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "com.example.Mail");

    identifier = "browser.a";
    controller->refreshBrowsers();
    ASSERT_EQ(controller->applications().size(), 1u);
    ASSERT_EQ(controller->browsers().size(), 1u);
    EXPECT_EQ(controller->browsers().front().bundleID, "browser.b");
    identifier = std::nullopt;
    controller->refreshBrowsers();
    EXPECT_EQ(controller->browsers().size(), 2u);
}

TEST_F(Lifecycle, ActivatingFernhopKeepsTheSource) {
    storeAppRule("com.example.Mail", "browser.b");
    launch();
    desktop.workspace.activate(running("com.example.Mail"));
    route("https://docs.example/1");
    desktop.workspace.activate(running(own));
    route("https://docs.example/2");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

TEST_F(Lifecycle, NotificationsWithoutAnApplicationAreIgnored) {
    class Other : public Object {};
    launch();
    desktop.workspace.activate(running("com.example.Mail"));
    const std::string name(didActivateApplicationNotification);
    desktop.workspaceCenter.post({name, std::nullopt});
    desktop.workspaceCenter.post({name, Notification::UserInfo{}});
    desktop.workspaceCenter.post(
        {name, Notification::UserInfo{{std::string(workspaceApplicationKey), std::make_shared<Other>()}}});
    desktop.workspaceCenter.post(
        {name, Notification::UserInfo{{std::string(workspaceApplicationKey), nullptr}}});
    EXPECT_EQ(controller->sourceTracker().sourceBundleID(), "com.example.Mail");
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

TEST_F(Lifecycle, SourceIsKeptAfterItsApplicationHasQuit) {
    storeAppRule("com.example.Mail", "browser.b");
    launch();
    auto mail = running("com.example.Mail");
    desktop.workspace.activate(mail);
    mail.reset();
    desktop.workspace.front = nullptr;
    route("https://docs.example/");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
}

TEST_F(Lifecycle, IdentifierOfTheSourceIsReadWhenALinkIsRouted) {
    storeAppRule("com.example.Later", "browser.b");
    const auto application = running("com.example.Mail");
    desktop.workspace.front = application;
    launch();
    application->identifier = "com.example.Later";
    route("https://docs.example/");
    EXPECT_EQ(lastTarget(), "/Applications/browser.b.app");
}

TEST_F(Lifecycle, ThemeChangeUpdatesTheIcon) {
    launch();
    desktop.distributedCenter.post({std::string(themeChangedNotification), std::nullopt});
    EXPECT_EQ(desktop.statusBar.imagesSet, 2);
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(Lifecycle, StartUpIsInvokedBySelectorToo) {
    construct();
    controller->perform("applicationDidFinishLaunching:");
    EXPECT_TRUE(controller->linkIntake().didFinishLaunching());
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(Lifecycle, ReopeningAndClosingDoNothing) {
    launch();
    EXPECT_EQ(controller->perform("applicationShouldHandleReopen:hasVisibleWindows:"), ActionResult(false));
    EXPECT_EQ(controller->perform("applicationShouldTerminateAfterLastWindowClosed:"), ActionResult(false));
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
    EXPECT_TRUE(desktop.alerts.shown.empty());
}

TEST_F(Lifecycle, QuitAsksTheApplicationWhichAsksTheController) {
    launch();
    desktop.application.shouldTerminate = [&] { return controller->applicationShouldTerminate(); };
    controller->perform("quit");
    EXPECT_EQ(desktop.application.terminations, 1);
    EXPECT_EQ(desktop.application.lastReply, TerminateReply::now);
    EXPECT_TRUE(desktop.launchServices.calls.empty());
}

TEST_F(Lifecycle, QuitWithRestoreRestoresTheDefaultAndIsNotDelayed) {
    store(settingsKey::restoresDefaultBrowserOnQuit, {true});
    storeFallback("browser.b");
    setHandlers(own);
    desktop.launchServices.refuses = true;
    launch();
    EXPECT_EQ(controller->perform("applicationShouldTerminate:"), ActionResult(TerminateReply::now));
    EXPECT_EQ(desktop.launchServices.calls, (std::vector<std::pair<std::string, std::string>>{
                                                {"http", "browser.b"}, {"https", "browser.b"}}));
}

TEST_F(Lifecycle, RefreshListsNewApplicationsAndRebuildsTheMenu) {
    launch();
    desktop.installBrowser("browser.c");
    controller->perform("refreshApplicationList");
    EXPECT_EQ(controller->browsers().size(), 3u);
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
    const std::string menu = asText(*desktop.statusBar.menu);
    for (const char *line : {"\nbrowser.c <browser.c.app 16> => switchSystemDefaultBrowser: with browser.c\n",
                             "\n    browser.c <browser.c.app 16>\n",
                             " => setBrowserForSelectedApp: with app browser.a browser browser.c\n"})
        EXPECT_NE(menu.find(line), std::string::npos) << line;
}

TEST_F(Lifecycle, LaunchAndRefreshScanEachFolderForApplicationsAndForBrowsers) {
    desktop.applications.addPath("/Users/ada/Applications");
    constexpr int folders = 3;
    launch();
    EXPECT_EQ(desktop.applications.scans, 2 * folders);
    controller->perform("refreshApplicationList");
    EXPECT_EQ(desktop.applications.scans, 4 * folders);
}

TEST_F(Lifecycle, RefreshReloadsIcons) {
    storeAppRule("browser.a", "browser.b");
    launch();
    const auto atLaunch = desktop.workspace.iconRequests.size();
    EXPECT_GT(atLaunch, 0u);
    controller->rebuildMenu();
    EXPECT_EQ(desktop.workspace.iconRequests.size(), atLaunch);
    controller->perform("refreshApplicationList");
    EXPECT_EQ(desktop.workspace.iconRequests.size(), 2 * atLaunch);
}

TEST_F(Lifecycle, RefreshingTheListsDoesNotChangeTheMenu) {
    launch();
    desktop.installBrowser("browser.c");
    controller->refreshBrowsers();
    EXPECT_EQ(controller->applications().size(), 3u);
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(Lifecycle, FernhopIsInNoList) {
    desktop.installBrowser(own);
    launch();
    EXPECT_TRUE(std::ranges::none_of(controller->applications(),
                                     [](const auto &app) { return app.bundleID == own; }));
    EXPECT_TRUE(
        std::ranges::none_of(controller->browsers(), [](const auto &app) { return app.bundleID == own; }));
}

} // namespace
} // namespace fernhop
