#include "main/LinuxDesktop.h"

#include "platform/linux/applications/FernhopDesktopID.h"
#include "platform/linux/focus/FocusProviders.h"
#include "settings/ReadableSetting.h"

namespace fernhop::freedesktop {
namespace {

std::string ownID() {
    return std::string(fernhopDesktopID);
}

// Named as macOS names the settings of the same application, as the file can go from one to the other.
std::string settingsPath(const ConfigurationPlaces &places) {
    return places.configHome + "/fernhop/" + ownID() + ".plist";
}

SessionDisplays displaysOf(const Environment &environment) {
    return {environment.value("XDG_SESSION_TYPE").value_or(""),
            environment.value("WAYLAND_DISPLAY").value_or(""), environment.value("DISPLAY").value_or("")};
}

} // namespace

LinuxDesktop::LinuxDesktop(const Environment &environment, GDBusConnection *bus)
    : places(applicationPlacesOfProcess()), configuration(ConfigurationPlaces::fromEnvironment(
                                                environment.value("XDG_CURRENT_DESKTOP").value_or(""))),
      layout(applicationLayout(places)), files(places.home), entries(places), bundles(entries),
      defaults(settingsPath(configuration), isReadableSetting),
      launchServices(configuration, entries, ownID()),
      arrivalProblems(configuration, entries, ownID(), environment.value("BROWSER")),
      matcher(entries, processes, OwnApplication{ownID()}),
      focus(makeFocusProvider(displaysOf(environment), matcher)),
      themeNotifications(bus, distributedNotifications), launchSignals(bus),
      senderEvidence(matcher, processes, launchSignals),
      sourceNotifications(*focus, senderEvidence, workspaceNotifications),
      links(currentDelivery, [this](const LinkSender &sender) { sourceNotifications.linkArrives(sender); }),
      launcher({environment, bus, focus.get()}), workspace(entries, *focus, launcher, currentDelivery) {}

Platform LinuxDesktop::platform() {
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
