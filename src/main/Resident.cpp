#include "main/Resident.h"

#include "app/AppDelegate.h"
#include "cli/Perform.h"
#include "cli/ResidentSession.h"
#include "main/LinuxDesktop.h"
#include "main/LinuxSessionReport.h"
#include "platform/linux/applications/IconName.h"
#include "platform/linux/base/CallSoon.h"
#include "platform/linux/base/SessionBus.h"
#include "platform/linux/service/LinkService.h"
#include "platform/linux/tray/Symbols.h"

#include <unistd.h>

#include <cstdio>
#include <utility>

namespace fernhop::freedesktop {
namespace {

int fail(const std::string &reason) {
    std::fprintf(stderr, "fernhop: %s\n", reason.c_str());
    return exitStatus::failure;
}

/// Fernhop as it runs: the controller with the desktop below it and the command line beside it.
class Resident {
  public:
    explicit Resident(LinuxDesktop &linuxDesktop)
        : desktop(linuxDesktop), platform(desktop.platform()), delegate(platform),
          report(*desktop.focus, desktop.arrivalProblems, desktop.tray.get(),
                 [this] { return delegate.sourceTracker().sourceBundleID(); }),
          session(delegate, platform, report, callSoon) {}

    void run(GDBusConnection *bus, const Environment &environment) {
        desktop.application.setShouldTerminate([this] { return shouldTerminate(); });
        desktop.alerts.setHost({[this](ui::Selector action, const Object &sender) {
                                    (void)delegate.perform(action, {.sender = &sender});
                                },
                                [this](const std::string &path) { return iconOfEntry(path); },
                                [](const std::string &name, ui::Color ink) { return symbolNamed(name, ink); },
                                [this] { return desktop.tray->statedAppearance(); },
                                [this] { return std::exchange(activationToken, {}); }});
        desktop.application.endWithBus(bus);
        // The bus of a user may live on into the next session. Who stayed would keep the name, with the old
        // session's environment and no windows to look at.
        desktop.application.endWithDisplay(environment);
        desktop.alerts.setWhenLoaded(
            [this, &environment] { desktop.application.endWithDisplay(environment); });
        desktop.tray->setPerform([this](ui::Selector selector, const ui::MenuItem &sender) {
            (void)delegate.perform(selector, {.sender = &sender});
        });
        desktop.tray->setTakeToken([this](const std::string &token) { setActivationToken(token); });
        delegate.applicationDidFinishLaunching();
        desktop.application.run();
    }

    CommandResult perform(const std::vector<std::string> &arguments, const std::string &input) {
        return cli::perform(arguments, input, session.context());
    }

    /// Takes the desktop's token by which the next dialog may come to the front.
    void setActivationToken(const std::string &token) { activationToken = token; }

    void reopen() { (void)delegate.perform("applicationShouldHandleReopen:hasVisibleWindows:"); }

  private:
    TerminateReply shouldTerminate() {
        const auto reply = delegate.applicationShouldTerminate();
        // An open dialog runs a loop of its own within the main one.
        desktop.alerts.dismiss();
        return reply;
    }

    std::string iconOfEntry(const std::string &path) const {
        const auto entry = desktop.entries.entryAtPath(path);
        return entry ? iconName(entry->icon) : "";
    }

    LinuxDesktop &desktop;
    const Platform platform;
    AppDelegate delegate;
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

} // namespace

int runResident(const Environment &environment) {
    const auto connection = connectToSessionBus(environment);
    if (!connection)
        return fail(connection.failure().reason);
    GDBusConnection *bus = connection->get();
    LinuxDesktop desktop(environment, bus);
    // Whoever finds us on the bus may end us in order: a signal waits until the main loop runs.
    desktop.application.endWithSignals();
    // Calls come from the main loop, so none reaches the service before the controller is there.
    std::optional<Resident> resident;
    LinkService service(
        bus, desktop.links,
        {[&](const auto &arguments, const auto &input) { return resident->perform(arguments, input); },
         [&](const auto &token) { resident->setActivationToken(token); }, [&] { resident->reopen(); }});
    if (!service.exportObject())
        return fail("the bus does not take Fernhop's object");
    const auto name = requestName(bus, serviceName);
    if (name == NameRequest::taken)
        return exitStatus::success;
    if (name == NameRequest::failed)
        return fail("the bus does not give Fernhop its name");
    resident.emplace(desktop);
    resident->run(bus, environment);
    // What was answered last, the call that ended Fernhop perhaps, is still on its way out.
    g_dbus_connection_flush_sync(bus, nullptr, nullptr);
    // Before the service goes: its callers are to hear that nobody is here, which has them start another
    // Fernhop, and not that Fernhop knows no links.
    g_dbus_connection_close_sync(bus, nullptr, nullptr);
    return exitStatus::success;
}

void openWithoutBus(const Environment &environment, const std::vector<std::string> &links) {
    LinuxDesktop desktop(environment, nullptr);
    AppDelegate delegate(desktop.platform());
    delegate.applicationDidFinishLaunching();
    desktop.links.deliver({links, senderOf(environment, desktop.processes)}, nullptr);
}

} // namespace fernhop::freedesktop
