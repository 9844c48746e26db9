#include "contract/WorkspaceContract.h"
#include "fakes/FakeWorkspace.h"

namespace fernhop::contract {
namespace {

/// A session in memory.
class FakeSession : public WorkspaceSession {
  public:
    FakeSession() {
        for (const std::string id : {"org.example.A", "org.example.B"})
            disk.installApplication(pathOf(id), id, id, {"https"});
    }
    Workspace &workspace() override { return fake; }
    Url bundleOf(const std::string &id) const override { return Url::fileUrl(pathOf(id)); }
    void uninstall(const std::string &id) override { disk.remove(pathOf(id)); }
    void breakA() override { fake.failure = OpenError{"It is broken."}; }
    void bringToFront(const std::string &id) override {
        fake.activate(std::make_shared<fakes::FakeRunningApplication>(id));
    }
    bool runUntil(const std::function<bool()> &condition) override { return condition(); }
    std::vector<std::string> opened() const override {
        std::vector<std::string> links;
        for (const auto &call : fake.opened)
            for (const auto &url : call.urls)
                links.push_back(url.absoluteString());
        return links;
    }

  private:
    static std::string pathOf(const std::string &id) { return "/Applications/" + id + ".app"; }

    fakes::FakeApplications disk;
    fakes::FakeNotificationCenter notifications;
    fakes::FakeWorkspace fake{disk, notifications};
};

INSTANTIATE_TEST_SUITE_P(Fake, WorkspaceContract,
                         testing::Values([] { return std::make_unique<FakeSession>(); }));

} // namespace
} // namespace fernhop::contract
