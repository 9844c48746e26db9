#include "main/LinuxDesktop.h"

#include "platform/linux/base/PassOnPrograms.h"
#include "platform/linux/defaulthandler/RoutingDiagnostics.h"
#include "settings/ReadableSetting.h"

#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

namespace fernhop::freedesktop {
namespace {

std::string ownID() {
    return std::string(fernhopDesktopID);
}

// A write takes some milliseconds; who holds the settings for this long has stopped. Links are waiting, so it
// is shorter than for a command that works by itself.
constexpr std::chrono::milliseconds residentWait{500};

// Named as macOS names the settings of the same application, as the file can go from one to the other.
std::string settingsPath(const XdgSession &session) {
    return session.configHome + "/fernhop/" + ownID() + ".plist";
}

/// A matcher with all that it stands on, for a thread of its own.
std::shared_ptr<ApplicationMatcher> ownMatcher(const ApplicationPlaces &places) {
    struct Whole {
        explicit Whole(const ApplicationPlaces &places) : entries(places) {}

        const InstalledDesktopEntries entries;
        const Processes processes;
        ApplicationMatcher matcher{entries, processes, OwnApplication{ownID()}};
    };
    const auto whole = std::make_shared<Whole>(places);
    return {whole, &whole->matcher};
}

} // namespace

LinuxDesktop::LinuxDesktop(const Environment &environment, GDBusConnection *bus)
    : browserVariable(environment.value("BROWSER")), places(applicationPlaces(environment)),
      configuration(XdgSession::of(environment)), layout(applicationLayout(places)), files(places.home),
      entries(places), bundles(entries, installedFile("share/fernhop/resources")),
      defaults(settingsPath(configuration), isReadableSetting,
               bus ? residentWait : PropertyListDefaults::longestUsualWait),
      launchServices(configuration, entries, ownID()), matcher(entries, processes, OwnApplication{ownID()}),
      focus(makeFocusProvider(displaysOf(environment), ownMatcher(places))), launchSignals(bus),
      senderEvidence(matcher, processes, launchSignals),
      sourceNotifications(*focus, senderEvidence, launchSignals, workspaceNotifications),
      links(currentDelivery,
            [this](const LinkSender &sender, std::function<void()> handle) {
                sourceNotifications.linkArrives(sender, std::move(handle));
            }),
      launcher({environment, bus, focus.get()}), workspace(entries, *focus, launcher, currentDelivery),
      icons(entries, iconFolders(places)) {}

Platform LinuxDesktop::platform(ui::StatusBar &statusBar, ui::AlertPresenter &alerts, Sound &beeper) {
    return {application,
            workspace,
            workspaceNotifications,
            distributedNotifications,
            launchServices,
            defaults,
            files,
            bundles,
            links,
            log,
            beeper,
            statusBar,
            images,
            alerts,
            layout};
}

std::vector<std::string> LinuxDesktop::routingProblems() const {
    return freedesktop::routingProblems(configuration, entries, ownID(), browserVariable);
}

std::string installedFile(std::string_view path) {
    // By the way from this program, so that Fernhop can be moved as a whole.
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const bool isInLibraries = folder.filename() == "fernhop"; // of lib/fernhop, beside bin
    const auto prefix = isInLibraries ? folder.parent_path().parent_path() : folder.parent_path();
    return (prefix / path).string();
}

SessionDisplays displaysOf(const Environment &environment) {
    return {environment.value("XDG_SESSION_TYPE").value_or(""),
            environment.value("WAYLAND_DISPLAY").value_or(""), environment.value("DISPLAY").value_or("")};
}

} // namespace fernhop::freedesktop
