#include "app/AppDelegate.h"

#include "catalog/OwnBundleID.h"

#include <utility>

namespace fernhop {

AppDelegate::AppDelegate(Platform desktop)
    : platform(std::move(desktop)),
      statusItem(platform.statusBar.statusItemWithLength(ui::squareStatusItemLength)),
      applicationCatalog(platform.files, platform.bundles, platform.layout),
      catalog(platform.workspace, platform.files, platform.bundles, applicationCatalog),
      preferences(platform.defaults),
      icons({platform.workspace, catalog, installedApplications, installedBrowsers}),
      intake([this](const Url &url) { route(url); }),
      router({preferences, catalog, platform.workspace, platform.files, platform.bundles, installedBrowsers}),
      defaultHandlerControl(
          {platform.launchServices, platform.defaults, platform.bundles, platform.sound, installedBrowsers},
          [this] { rebuildMenu(); }),
      statusItemAppearance(platform.bundles, platform.images),
      statusMenu({catalog, preferences, defaultHandlerControl, platform.images, icons, installedApplications,
                  installedBrowsers}),
      ruleDialogSources{preferences,           defaultHandlerControl, icons,
                        platform.images,       platform.sound,        platform.alerts,
                        installedApplications, installedBrowsers,     [this] { rebuildMenu(); }},
      addAppRulesDialog(ruleDialogSources), editAppRuleDialog(ruleDialogSources),
      urlRuleDialog(ruleDialogSources), feedbackDialog({platform.bundles, platform.images, platform.workspace,
                                                        platform.sound, platform.alerts}),
      ruleActions(preferences, defaultHandlerControl,
                  {[this] { rebuildMenu(); }, [this](const URLRule &rule) { showEditURLRuleDialog(rule); },
                   [this](const std::string &app) { showEditRuleDialog(app); }}),
      actions(makeActionTable()) {
    init();
}

void AppDelegate::init() {
    // Before launch has finished, so that the link which started the application is not missed.
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
        themeChangedNotification, [this](const Notification &) { systemAppearanceDidChange(); });
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
    // The completion may come on any thread, so it uses copies and no state of the controller.
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
    icons.clear();
    installedBrowsers = catalog.installedBrowsers(own);
}

void AppDelegate::activeApplicationDidChange(const Notification &notification) {
    if (sources.applicationDidActivate(notification, ownBundleID(platform.bundles)))
        rebuildMenu();
}

void AppDelegate::systemAppearanceDidChange() {
    statusItemAppearance.updateStatusItemAppearance(*statusItem, defaultHandlerControl.isRoutingEnabled());
}

void AppDelegate::rebuildMenu() {
    // Read once, so that the tooltip and all menu items agree.
    const auto defaultBrowser = defaultHandlerControl.read();
    statusItemAppearance.updateStatusItemAppearance(*statusItem, defaultBrowser.routingEnabled);
    statusItem->setMenu(std::make_shared<const ui::Menu>(statusMenu.build(defaultBrowser)));
}

void AppDelegate::runDialog(const std::function<void()> &dialog) {
    if (!platform.alerts.bringToFront())
        dialog();
}

void AppDelegate::showAddURLRuleDialog() {
    runDialog([this] { urlRuleDialog.showURLRuleDialog(std::nullopt); });
}

void AppDelegate::showEditURLRuleDialog(const URLRule &rule) {
    runDialog([&] { urlRuleDialog.showURLRuleDialog(rule); });
}

void AppDelegate::showAddRuleDialog() {
    runDialog([this] { addAppRulesDialog.showAddRuleDialog(); });
}

void AppDelegate::showEditRuleDialog(const std::string &sourceBundleID) {
    runDialog([&] { editAppRuleDialog.showEditRuleDialog(sourceBundleID); });
}

void AppDelegate::showFeedbackDialog() {
    runDialog([this] { feedbackDialog.showFeedbackDialog(); });
}

} // namespace fernhop
