#include "contract/LaunchServicesContract.h"
#include "macos/double/Recorder.h"
#include "platform/macos/SystemLaunchServices.h"

namespace fernhop::contract {
namespace {

class MacSystem : public LaunchServicesSystem {
  public:
    MacSystem() { macos_double::reset(); }
    LaunchServices &services() override { return launchServices; }
    void refuseC() override { macos_double::recorder().services.handlerStatus = -10814; }

  private:
    macos::SystemLaunchServices launchServices;
};

INSTANTIATE_TEST_SUITE_P(Mac, LaunchServicesContract,
                         testing::Values(LaunchServicesKind{"launchServices",
                                                            [] { return std::make_unique<MacSystem>(); }}));

} // namespace
} // namespace fernhop::contract
