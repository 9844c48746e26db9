#include "contract/LaunchServicesContract.h"
#include "fakes/FakeLaunchServices.h"

namespace fernhop::contract {
namespace {

class FakeSystem : public LaunchServicesSystem {
  public:
    LaunchServices &services() override { return fake; }
    void refuseC() override { fake.refuses = true; }

  private:
    fakes::FakeLaunchServices fake;
};

INSTANTIATE_TEST_SUITE_P(Fake, LaunchServicesContract,
                         testing::Values(LaunchServicesKind{"fake",
                                                            [] { return std::make_unique<FakeSystem>(); }}));

} // namespace
} // namespace fernhop::contract
