#include "contract/LaunchServicesContract.h"
#include "platform/linux/applications/ApplicationPlaces.h"
#include "platform/linux/applications/InstalledDesktopEntries.h"
#include "platform/linux/defaulthandler/FreedesktopLaunchServices.h"
#include "support/TemporaryHome.h"

namespace fernhop::contract {
namespace {

using namespace freedesktop;

/// A user's folders in a session of a desktop. A handler that is not installed is refused. The applications
/// declare no scheme, as one that does may open its links where nothing is set.
class FreedesktopSystem : public LaunchServicesSystem {
  public:
    explicit FreedesktopSystem(const std::string &desktop)
        : environment(home.environment() + support::Environment{{"XDG_CURRENT_DESKTOP", desktop}}),
          entries(applicationPlaces(Environment::current())),
          launchServices(XdgSession::of(Environment::current()), entries, "org.fernhop.Fernhop") {
        for (const std::string id : {"org.example.A", "org.example.B"})
            home.writeDesktopEntry(id, "[Desktop Entry]\nType=Application\nName=" + id + "\nExec=true %u\n");
    }
    LaunchServices &services() override { return launchServices; }
    void refuseC() override {}

  private:
    support::TemporaryHome home;
    support::ScopedEnvironment environment;
    InstalledDesktopEntries entries;
    FreedesktopLaunchServices launchServices;
};

LaunchServicesKind inDesktop(const std::string &name) {
    return {name.empty() ? "none" : name, [name] { return std::make_unique<FreedesktopSystem>(name); }};
}

INSTANTIATE_TEST_SUITE_P(Freedesktop, LaunchServicesContract,
                         testing::Values(inDesktop("GNOME"), inDesktop("KDE"), inDesktop("XFCE"),
                                         inDesktop("LXQt"), inDesktop("MATE"), inDesktop("X-Generic"),
                                         inDesktop("")));

} // namespace
} // namespace fernhop::contract
