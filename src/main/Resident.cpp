#include "main/Resident.h"

#include "app/AppDelegate.h"
#include "app/DialogRequest.h"
#include "cli/Perform.h"
#include "cli/ResidentSession.h"
#include "main/LinuxDesktop.h"
#include "main/LinuxSessionReport.h"
#include "main/NoScreen.h"
#include "platform/linux/base/Bus.h"
#include "platform/linux/base/CallLimit.h"
#include "platform/linux/dialogs-qt/DialogsProgram.h"
#include "platform/linux/service/LinkService.h"
#include "platform/linux/service/Upgrade.h"
#include "platform/linux/tray/TrayStatusBar.h"
#include "platform/ui/Button.h"
#include "settings/Preferences.h"

#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {
namespace {

int fail(const std::string &reason) {
    std::fprintf(stderr, "fernhop: %s\n", reason.c_str());
    return exitStatus::failure;
}

// Long enough for a panel that starts with the session, short enough for someone who waits for the icon.
constexpr std::chrono::milliseconds hostPatience{4000};

// A dialog that is not brought to the front by then hangs.
constexpr std::chrono::milliseconds dialogPatience{5000};

// Panels have a few dozen calls in progress when a menu opens.
constexpr std::size_t mostCalls = 128;

bool bringsNoLinks(std::string_view method) {
    return method != "Open" && method != "OpenLinks";
}

std::string dialogsProgram() {
    return installedFile("lib/fernhop/fernhop-dialogs");
}

EmbeddedTrayPlace embeddedTrayPlace(const Environment &environment, GDBusConnection *bus) {
    const auto displays = displaysOf(environment);
    return {isXSession(displays) ? displays.xDisplay : "",
            [bus] {
                return std::make_unique<IconProgram>(dialogsProgram(),
                                                     g_dbus_connection_get_unique_name(bus));
            },
            hostPatience};
}

/// Fernhop as it runs: the controller with the desktop below it and the command line beside it.
class Resident {
  public:
    Resident(LinuxDesktop &linuxDesktop, GDBusConnection *sessionBus, const Environment &startEnvironment)
        : desktop(linuxDesktop), bus(sessionBus), environment(startEnvironment),
          tray(bus, desktop.icons, embeddedTrayPlace(environment, bus), [this] { appearanceChanged(); }),
          platform(desktop.platform(tray, noAlerts, desktop.sound)), delegate(platform),
          dialogs(dialogsProgram(), dialogPatience,
                  {[this] { (void)delegate.perform("refreshApplicationList"); },
                   [this] { desktop.sound.beep(); },
                   [this](const auto &selector, const auto &identifier) { press(selector, identifier); },
                   [this](const auto &reason, bool beeps) { dialogFailed(reason, beeps); }}),
          report(desktop, &tray, [this] { return delegate.sourceTracker().sourceBundleID(); }),
          session(delegate, platform, report, [this](const auto &request) { openDialog(request); }) {}

    void start() {
        desktop.application.setShouldTerminate([this] { return delegate.applicationShouldTerminate(); });
        desktop.application.endWithBus(bus);
        // The bus of a user may outlive the session. A resident that stayed would keep the name in the next
        // session, with the old session's environment and no windows to look at.
        desktop.focus->onDisplayEnd([this] { desktop.application.terminate(); });
        tray.setPerform([this](ui::Selector selector, const ui::MenuItem &sender) {
            if (const auto request = dialogRequest(selector, &sender))
                openDialog(*request);
            else
                (void)delegate.perform(selector, {.sender = &sender});
        });
        tray.setTakeToken([this](const std::string &token) { setActivationToken(token); });
        rememberFormerBrowser();
        delegate.applicationDidFinishLaunching();
    }

    CommandResult perform(const std::vector<std::string> &arguments, const std::string &input) {
        return cli::perform(arguments, input, session.context());
    }

    /// Takes the desktop's token by which the next dialog may come to the front.
    void setActivationToken(const std::string &token) { activationToken = token; }

    void reopen() { (void)delegate.perform("applicationShouldHandleReopen:hasVisibleWindows:"); }

  private:
    /// Where no handler is set, its installation alone can make Fernhop the one. Links then go on to where
    /// they went before, as if App Routing had been turned on.
    void rememberFormerBrowser() {
        const auto former = desktop.launchServices.browserBehindAssociation();
        if (former && !desktop.defaults.stringForKey(settingsKey::routingFallbackBrowserID))
            (void)desktop.defaults.setObject(PropertyValue{*former}, settingsKey::routingFallbackBrowserID);
    }

    void openDialog(const DialogRequest &request) {
        dialogs.open(request.selector, request.subject, std::exchange(activationToken, {}));
    }

    /// Performs the action of a button that the dialogs program shows.
    void press(const std::string &selector, const std::string &identifier) {
        ui::Button button;
        button.identifier = identifier;
        (void)delegate.perform(selector, {.sender = &button});
    }

    void dialogFailed(const std::string &reason, bool beeps) {
        desktop.log.log("No dialog: " + reason);
        if (beeps)
            desktop.sound.beep();
    }

    void appearanceChanged() {
        desktop.distributedNotifications.post({std::string(themeChangedNotification), std::nullopt});
        dialogs.setAppearance(tray.statedAppearance());
    }

    LinuxDesktop &desktop;
    GDBusConnection *const bus;
    const Environment &environment;
    TrayStatusBar tray;
    NoAlerts noAlerts;
    const Platform platform;
    AppDelegate delegate;
    DialogsProgram dialogs;
    const LinuxSessionReport report;
    cli::ResidentSession session;
    std::string activationToken; ///< empty: none came
};

/// This process took the place of the one that was given the links, so its surroundings are the sender's.
LinkSender senderOf(const Environment &environment, const Processes &processes) {
    LinkSender sender;
    sender.parentPid = getppid();
    sender.controlGroup = processes.controlGroupOf(getpid());
    sender.tokens = {environment.value("XDG_ACTIVATION_TOKEN"), environment.value("DESKTOP_STARTUP_ID")};
    return sender;
}

void logSettingsProblems(LinuxDesktop &desktop) {
    desktop.defaults.onProblem([&desktop](const auto &problem) { desktop.log.log("Fernhop: " + problem); });
}

/// Runs the main loop until Fernhop ends. When its program is replaced meanwhile, this process goes on with
/// the new one, as it is: the default role is not handed back.
void runUntilEnd(LinuxDesktop &desktop, GDBusConnection *bus, LinkService &service,
                 std::optional<Upgrade> &upgrade, const Environment &environment) {
    for (bool isFirst = true, isUpgraded = true; isUpgraded; isFirst = false) {
        isUpgraded = false;
        upgrade.emplace(bus, service, [&] {
            isUpgraded = true;
            desktop.application.pause();
        });
        // A program that could not be executed is not tried again before it changes.
        if (isFirst)
            upgrade->check();
        desktop.application.run();
        // The last answers, perhaps to the call that ended Fernhop, may not have been sent yet.
        g_dbus_connection_flush_sync(bus, nullptr, nullptr);
        if (!isUpgraded)
            return;
        executeInstalledProgram(environment);
        service.setUpgrading(nullptr);
        if (requestName(bus, serviceName) != NameRequest::owned)
            return;
    }
}

} // namespace

int runResident(const Environment &environment) {
    const auto connection = connectToSessionBus(environment);
    if (!connection)
        return fail(connection.failure().reason);
    GDBusConnection *bus = connection->get();
    LinuxDesktop desktop(environment, bus);
    logSettingsProblems(desktop);
    // Before the name is on the bus, as a process that is found there may be sent a signal. The signal then
    // waits for the main loop.
    desktop.application.endWithSignals();
    // The main loop brings the calls, so none reaches the service before the controller exists.
    std::optional<Resident> resident;
    std::optional<Upgrade> upgrade;
    const CallLimit limit(bus, mostCalls, bringsNoLinks);
    LinkService service(
        bus, desktop.links,
        {[&](const auto &arguments, const auto &input) { return resident->perform(arguments, input); },
         [&](const auto &token) { resident->setActivationToken(token); }, [&] { resident->reopen(); },
         [&] { upgrade->check(); }});
    if (!service.exportObject())
        return fail("the bus does not take Fernhop's object");
    const auto name = requestName(bus, serviceName);
    if (name == NameRequest::taken)
        return exitStatus::success;
    if (name == NameRequest::failed)
        return fail("the bus does not give Fernhop its name");
    reapInheritedChildren();
    resident.emplace(desktop, bus, environment);
    resident->start();
    runUntilEnd(desktop, bus, service, upgrade, environment);
    // Before the service goes: its callers are to hear that Fernhop is not running, which has them start it
    // again, and not that its object is missing.
    g_dbus_connection_close_sync(bus, nullptr, nullptr);
    return exitStatus::success;
}

std::vector<UnopenedLink> openWithoutBus(const Environment &environment,
                                         const std::vector<std::string> &links) {
    LinuxDesktop desktop(environment, nullptr);
    logSettingsProblems(desktop);
    NoStatusBar statusBar;
    NoAlerts alerts;
    AppDelegate delegate(desktop.platform(statusBar, alerts, desktop.sound));
    delegate.applicationDidFinishLaunching();
    std::optional<std::vector<UnopenedLink>> unopened;
    desktop.links.deliver({links, senderOf(environment, desktop.processes)},
                          [&](auto failed) { unopened = std::move(failed); });
    while (!unopened)
        g_main_context_iteration(nullptr, TRUE);
    return *std::move(unopened);
}

} // namespace fernhop::freedesktop
