#include "contract/BundlesContract.h"
#include "fakes/FakeApplications.h"

namespace fernhop::contract {
namespace {

/// Bundles in memory.
class FakeMachine {
  public:
    [[nodiscard]] const Bundles &bundles() const { return disk; }
    [[nodiscard]] const FileManager &files() const { return disk; }
    [[nodiscard]] ApplicationLayout layout() const { return {{Url::fileUrl("/Applications")}, "app"}; }
    [[nodiscard]] Url urlOf(const std::string &name) const { return Url::fileUrl(pathOf(name)); }
    void install(const std::string &name, const Schemes &schemes) {
        disk.installApplication(pathOf(name), name, name, schemes);
    }
    void installUnlisted(const std::string &name) {
        disk.install(pathOf(name), {std::nullopt, {{"CFBundleDisplayName", {name}}}});
    }
    void remove(const std::string &name) { disk.remove(pathOf(name)); }

  private:
    [[nodiscard]] static std::string pathOf(const std::string &name) {
        return "/Applications/" + name + ".app";
    }

    fakes::FakeApplications disk;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, BundlesContract, FakeMachine);

} // namespace
} // namespace fernhop::contract
