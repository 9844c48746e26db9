#include "contract/WorkspaceContract.h"
#include "macos/double/Recorder.h"
#include "platform/macos/SystemWorkspace.h"

namespace fernhop::contract {
namespace {

class MacSession : public WorkspaceSession {
  public:
    MacSession() {
        macos_double::reset();
        for (const std::string id : {"org.example.A", "org.example.B"})
            services().applications[id] = "/Applications/" + id + ".app";
    }
    Workspace &workspace() override { return system; }
    Url bundleOf(const std::string &id) const override {
        return *Url::parse("file:///Applications/" + id + ".app/");
    }
    void uninstall(const std::string &id) override { services().applications.erase(id); }
    void breakA() override { services().openError = "It is broken."; }
    void bringToFront(const std::string &id) override { services().frontmost.emplace(id); }
    bool runUntil(const std::function<bool()> &condition) override { return condition(); }
    std::vector<std::string> opened() const override {
        std::vector<std::string> links;
        for (const auto &call : services().opened)
            links.insert(links.end(), call.urls.begin(), call.urls.end());
        return links;
    }

  private:
    static macos_double::Services &services() { return macos_double::recorder().services; }

    macos::SystemWorkspace system;
};

INSTANTIATE_TEST_SUITE_P(Mac, WorkspaceContract,
                         testing::Values([] { return std::make_unique<MacSession>(); }));

} // namespace
} // namespace fernhop::contract
