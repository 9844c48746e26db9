#include "main/LinuxDesktop.h"

#include "platform/linux/base/FernhopDesktopID.h"
#include "settings/ReadableSetting.h"

#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

namespace fernhop::freedesktop {
namespace {

// Long enough for a panel that starts with the session, short enough for someone who waits for the icon.
constexpr std::chrono::milliseconds hostPatience{4000};

std::string ownID() {
    return std::string(fernhopDesktopID);
}

// Named as macOS names the settings of the same application, as the file can go from one to the other.
std::string settingsPath(const XdgSession &session) {
    return session.configHome + "/fernhop/" + ownID() + ".plist";
}

// Beside the program, installed and in the build tree alike, so that Fernhop can be moved as a whole.
std::string resourceFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : (program.parent_path().parent_path() / "share/fernhop/resources").string();
}

SessionDisplays displaysOf(const Environment &environment) {
    return {environment.value("XDG_SESSION_TYPE").value_or(""),
            environment.value("WAYLAND_DISPLAY").value_or(""), environment.value("DISPLAY").value_or("")};
}

// Beside the program, where it is installed and where it is built.
std::string dialogsModule() {
    std::error_code error;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", error);
    return (own.parent_path().parent_path() / "lib/fernhop/libfernhop-dialogs.so").string();
}

} // namespace

LinuxDesktop::LinuxDesktop(const Environment &environment, GDBusConnection *bus)
    : places(applicationPlaces(environment)), configuration(XdgSession::of(environment)),
      layout(applicationLayout(places)), files(places.home), entries(places),
      bundles(entries, resourceFolder()), defaults(settingsPath(configuration), isReadableSetting),
      launchServices(configuration, entries, ownID()),
      arrivalProblems(configuration, entries, ownID(), environment.value("BROWSER")),
      matcher(entries, processes, OwnApplication{ownID()}),
      focus(makeFocusProvider(displaysOf(environment), matcher)), launchSignals(bus),
      senderEvidence(matcher, processes, launchSignals),
      sourceNotifications(*focus, senderEvidence, workspaceNotifications),
      links(currentDelivery, [this](const LinkSender &sender) { sourceNotifications.linkArrives(sender); }),
      launcher({environment, bus, focus.get()}), workspace(entries, *focus, launcher, currentDelivery),
      icons(entries, iconFolders(places)), tray(makeTray(displaysOf(environment), bus)),
      alerts(dialogsModule(), sound) {}

std::unique_ptr<TrayStatusBar> LinuxDesktop::makeTray(const SessionDisplays &displays, GDBusConnection *bus) {
    if (bus == nullptr)
        return nullptr;
    EmbeddedTrayPlace embedding{
        isXSession(displays) ? displays.xDisplay : "",
        [this](PerformAction perform) { return alerts.makeEmbeddedIcon(std::move(perform)); }, hostPatience};
    return std::make_unique<TrayStatusBar>(bus, icons, std::move(embedding), [this] {
        distributedNotifications.post({std::string(themeChangedNotification), std::nullopt});
        alerts.appearanceChanged();
    });
}

Platform LinuxDesktop::platform() {
    ui::StatusBar &statusBar = tray ? static_cast<ui::StatusBar &>(*tray) : noStatusBar;
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
            sound,
            statusBar,
            images,
            alerts,
            layout};
}

} // namespace fernhop::freedesktop
