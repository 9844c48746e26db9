#include "contract/BundlesContract.h"
#include "platform/linux/applications/DesktopBundles.h"
#include "platform/linux/applications/PosixFileManager.h"
#include "support/TemporaryHome.h"

#include <filesystem>

namespace fernhop::contract {
namespace {

/// Desktop entries in private folders.
class LinuxMachine {
  public:
    [[nodiscard]] const Bundles &bundles() const { return desktopBundles; }
    [[nodiscard]] const FileManager &files() const { return manager; }
    [[nodiscard]] ApplicationLayout layout() const { return freedesktop::applicationLayout(places); }
    [[nodiscard]] Url urlOf(const std::string &name) const { return Url::fileUrl(pathOf(name)); }
    void install(const std::string &name, const Schemes &schemes) {
        std::string types;
        for (const auto &scheme : schemes)
            types += "x-scheme-handler/" + scheme + ";";
        write(name, "MimeType=" + types + "\n");
    }
    void installUnlisted(const std::string &name) { write(name, "NoDisplay=true\n"); }
    void remove(const std::string &name) { std::filesystem::remove(pathOf(name)); }

  private:
    [[nodiscard]] std::string pathOf(const std::string &name) const {
        return home.applications() + "/" + name + ".desktop";
    }
    void write(const std::string &name, const std::string &keys) {
        home.write(pathOf(name),
                   "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=/bin/true %u\n" + keys);
    }

    support::TemporaryHome home;
    freedesktop::ApplicationPlaces places{{home.applications()}, {}, {}, home.home(), {}};
    freedesktop::InstalledDesktopEntries entries{places};
    freedesktop::DesktopBundles desktopBundles{entries};
    freedesktop::PosixFileManager manager{home.home()};
};

TEST(DesktopBundles, AFolderIsNotABundle) {
    EXPECT_FALSE(LinuxMachine().bundles().bundleWithUrl(Url::fileUrl("/")));
}

INSTANTIATE_TYPED_TEST_SUITE_P(Desktop, BundlesContract, LinuxMachine);

} // namespace
} // namespace fernhop::contract
