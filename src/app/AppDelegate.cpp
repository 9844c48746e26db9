#include "app/AppDelegate.h"

#include "catalog/OwnBundleID.h"

#include <utility>

namespace fernhop {

AppDelegate::AppDelegate(Platform desktop, Presentation &shown)
    : platform(std::move(desktop)), presentation(shown),
      applicationCatalog(platform.files, platform.bundles, platform.layout),
      catalog(platform.workspace, platform.files, platform.bundles, applicationCatalog),
      preferences(platform.defaults), intake([this](const Url &url) { route(url); }),
      router({preferences, catalog, platform.workspace, platform.files, platform.bundles, installedBrowsers}),
      defaultHandlerControl(
          {platform.launchServices, platform.defaults, platform.bundles, platform.sound, installedBrowsers},
          [this] { rebuildMenu(); }),
      ruleActions(
          preferences, defaultHandlerControl, [this] { rebuildMenu(); },
          [this](Dialog dialog, const std::string &subject) { showDialog(dialog, subject); }),
      actions(makeActionTable()) {
    init();
}

void AppDelegate::init() {
    // Before launch has finished, so that the link which starts the application is caught.
    platform.links.setEventHandler(
        [this](const LinkEventDescriptor &event, LinkEventDescriptor &) { intake.handleGetURLEvent(event); },
        getUrlEventCode, getUrlEventCode);
}

std::optional<ActionResult> AppDelegate::perform(std::string_view selector,
                                                 const ActionArguments &arguments) {
    const auto action = actions.find(selector);
    if (action == actions.end())
        return std::nullopt;
    return action->second(arguments);
}

void AppDelegate::applicationDidFinishLaunching() {
    platform.application.setActivationPolicy(ActivationPolicy::accessory);
    platform.workspaceNotifications.addObserver(
        didActivateApplicationNotification,
        [this](const Notification &notification) { activeApplicationDidChange(notification); });
    sources.seed(platform.workspace.frontmostApplication(), ownBundleID(platform.bundles));
    platform.distributedNotifications.addObserver(
        themeChangedNotification, [this](const Notification &) { presentation.appearanceDidChange(); });
    refreshBrowsers();
    rebuildMenu();
    intake.finishLaunching();
    intake.processPendingURLs();
}

TerminateReply AppDelegate::applicationShouldTerminate() {
    defaultHandlerControl.restoreSystemDefaultBrowserOnQuitIfNeeded();
    return TerminateReply::now;
}

void AppDelegate::route(const Url &url) {
    const RoutingDecision decision = decide(url, sources.sourceBundleID());
    if (decision.target) {
        open(url, *decision.target);
        return;
    }
    platform.log.log(noTargetLogLine(decision));
    platform.sound.beep();
}

RoutingDecision AppDelegate::decide(const Url &url, const std::optional<std::string> &source) {
    if (installedBrowsers.empty())
        refreshBrowsers();
    return router.decide(url, source);
}

void AppDelegate::open(const Url &url, const Browser &browser) {
    // The completion may come on any thread: it has copies of its own and touches no state of the controller.
    auto report = [url, browser, &log = platform.log, &sound = platform.sound](
                      const std::shared_ptr<RunningApplication> &, const std::optional<OpenError> &error) {
        if (!error)
            return;
        log.log(openFailureLogLine(url, browser, error->localizedDescription));
        sound.beep();
    };
    platform.workspace.openUrls({url}, browser.appURL, {.activates = true}, std::move(report));
}

void AppDelegate::refreshBrowsers() {
    const std::string own = ownBundleID(platform.bundles);
    installedApplications = applicationCatalog.installedApplications(own);
    installedBrowsers = catalog.installedBrowsers(own);
}

void AppDelegate::activeApplicationDidChange(const Notification &notification) {
    if (sources.applicationDidActivate(notification, ownBundleID(platform.bundles)))
        rebuildMenu();
}

void AppDelegate::showDialog(Dialog dialog, const std::optional<std::string> &subject) {
    if (!presentation.show(dialog, subject))
        platform.sound.beep();
}

} // namespace fernhop
