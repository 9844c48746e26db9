#include "contract/WorkspaceContract.h"
#include "platform/linux/applications/InstalledDesktopEntries.h"
#include "platform/linux/launch/FreedesktopWorkspace.h"
#include "platform/linux/source/FakeFocusProvider.h"
#include "support/MainLoop.h"
#include "support/RecordingBrowser.h"

#include <filesystem>

namespace fernhop::contract {
namespace {

using namespace freedesktop;

/// Real programs, started from the desktop entries of a private home folder.
class FreedesktopSession : public WorkspaceSession {
  public:
    FreedesktopSession() {
        install("org.example.A", browser.exec());
        install("org.example.B", "true");
    }
    Workspace &workspace() override { return freedesktop; }
    Url bundleOf(const std::string &id) const override { return Url::fileUrl(pathOf(id)); }
    void uninstall(const std::string &id) override { std::filesystem::remove(pathOf(id)); }
    void breakA() override {
        home.writeProgram(home.root() + "/broken", "#!/nowhere/interpreter\n");
        install("org.example.A", home.root() + "/broken");
    }
    void bringToFront(const std::string &id) override { focus.activate(id); }
    bool runUntil(const std::function<bool()> &condition) override { return support::runUntil(condition); }
    std::vector<std::string> opened() const override { return browser.links(); }

  private:
    std::string pathOf(const std::string &id) const { return home.applications() + "/" + id + ".desktop"; }
    void install(const std::string &id, const std::string &program) const {
        home.writeDesktopEntry(id, "[Desktop Entry]\nType=Application\nName=" + id + "\nExec=" + program +
                                       " %U\nMimeType=x-scheme-handler/https;\n");
    }

    support::TemporaryHome home;
    support::RecordingBrowser browser{home, "browser"};
    InstalledDesktopEntries entries{
        ApplicationPlaces{{home.applications()}, {"/usr/bin"}, {}, home.home(), {}}};
    fakes::FakeFocusProvider focus;
    Launcher launcher{LauncherServices{Environment({"PATH=/usr/bin"}), nullptr, &focus}};
    CurrentDelivery current;
    FreedesktopWorkspace freedesktop{entries, focus, launcher, current};
};

INSTANTIATE_TEST_SUITE_P(Freedesktop, WorkspaceContract,
                         testing::Values([] { return std::make_unique<FreedesktopSession>(); }));

} // namespace
} // namespace fernhop::contract
