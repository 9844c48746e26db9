#include "main/LinuxDesktop.h"

#include "platform/linux/applications/FernhopDesktopID.h"
#include "platform/linux/focus/X11FocusProvider.h"
#include "settings/ReadableSetting.h"

#include <utility>

namespace fernhop::freedesktop {
namespace {

/// For sessions that tell nobody which window is in front.
class UnknownFocus : public FocusProvider {
  public:
    [[nodiscard]] std::string name() const override { return "link sender"; }
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() const override { return nullptr; }
    void observe(std::function<void(std::shared_ptr<RunningApplication>)>) override {}
    bool raise(const RaiseRequest &) override { return false; }
};

std::string ownID() {
    return std::string(fernhopDesktopID);
}

// Named as macOS names the settings of the same application, as the file can go from one to the other.
std::string settingsPath(const ConfigurationPlaces &places) {
    return places.configHome + "/fernhop/" + ownID() + ".plist";
}

std::unique_ptr<FocusProvider> makeFocusProvider(const Environment &environment,
                                                 ApplicationMatcher &matcher) {
    const auto display = environment.value("DISPLAY").value_or("");
    std::unique_ptr<FocusProvider> provider;
    if (!display.empty() && !isWaylandSession(environment))
        provider = X11FocusProvider::connect(display, matcher);
    return provider ? std::move(provider) : std::make_unique<UnknownFocus>();
}

} // namespace

LinuxDesktop::LinuxDesktop(const Environment &environment, GDBusConnection *bus)
    : places(applicationPlacesOfProcess()), configuration(ConfigurationPlaces::fromEnvironment(
                                                environment.value("XDG_CURRENT_DESKTOP").value_or(""))),
      layout(applicationLayout(places)), files(places.home), entries(places), bundles(entries),
      defaults(settingsPath(configuration), isReadableSetting),
      launchServices(configuration, entries, ownID()),
      arrivalProblems(configuration, entries, ownID(), environment.value("BROWSER")),
      matcher(entries, processes, OwnApplication{ownID()}), focus(makeFocusProvider(environment, matcher)),
      links(currentDelivery, nullptr), launcher({environment, bus, focus.get()}),
      workspace(entries, *focus, launcher, currentDelivery) {}

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

void LinuxDesktop::followFocus() {
    focus->observe([this](std::shared_ptr<RunningApplication> activated) {
        Notification::UserInfo information;
        information.emplace(workspaceApplicationKey, std::move(activated));
        workspaceNotifications.post(
            {std::string(didActivateApplicationNotification), std::move(information)});
    });
}

} // namespace fernhop::freedesktop
