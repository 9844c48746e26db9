#include "support/ChildProcess.h"
#include "support/Folders.h"
#include "support/TemporaryHome.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace fernhop {
namespace {

namespace files = std::filesystem;
using support::ChildProcess;
using support::Environment;
using support::operator+;

std::string contents(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// Installs what a desktop needs to know Fernhop, from a build folder of its own: installing writes there.
class Packaging : public testing::Test {
  protected:
    support::TemporaryHome home;
    std::string prefix = home.home() + "/.local";
    std::string build = home.root() + "/build";

    int run(const std::vector<std::string> &arguments, const Environment &more = {}) const {
        return ChildProcess({arguments, home.environment() + more, home.root() + "/output"}).wait();
    }

    void configure() const {
        ASSERT_EQ(run({"cmake", "-S", support::sourceFolder() + "/tests/desktop/packaging/project", "-B",
                       build, "-DFERNHOP_SOURCE_DIR=" + support::sourceFolder()}),
                  0)
            << contents(home.root() + "/output");
    }

    void install(const Environment &more = {}) const {
        configure();
        ASSERT_EQ(run({"cmake", "--install", build, "--prefix", prefix}, more), 0)
            << contents(home.root() + "/output");
    }

    [[nodiscard]] std::string applications() const { return prefix + "/share/applications"; }

    [[nodiscard]] testing::AssertionResult hasLine(const std::string &path, const std::string &line) const {
        const auto text = '\n' + contents(path);
        if (text.find('\n' + line + '\n') != std::string::npos)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << path << " holds" << text;
    }
};

TEST_F(Packaging, EntriesNameTheProgramsByTheirWholePath) {
    install();
    const auto main = applications() + "/org.fernhop.Fernhop.desktop";
    EXPECT_TRUE(hasLine(main, "Exec=" + prefix + "/bin/fernhop-open %U"));
    EXPECT_TRUE(hasLine(main, "TryExec=" + prefix + "/bin/fernhop-open"));
    EXPECT_TRUE(hasLine(main, "StartupNotify=true"));
    EXPECT_TRUE(hasLine(main, "MimeType=x-scheme-handler/http;x-scheme-handler/https;"));
    EXPECT_EQ(contents(main).find("DBusActivatable"), std::string::npos);
    const auto resident = applications() + "/org.fernhop.Fernhop.Resident.desktop";
    EXPECT_TRUE(hasLine(resident, "Exec=" + prefix + "/bin/fernhop"));
    EXPECT_TRUE(hasLine(resident, "NoDisplay=true"));
    EXPECT_TRUE(hasLine(resident, "X-KDE-Wayland-Interfaces=org_kde_plasma_window_management"));
    EXPECT_TRUE(hasLine(prefix + "/share/dbus-1/services/org.fernhop.Fernhop.service",
                        "Exec=" + prefix + "/bin/fernhop"));
    EXPECT_TRUE(hasLine(prefix + "/share/xfce4/helpers/org.fernhop.Fernhop.desktop",
                        "X-XFCE-CommandsWithParameter=\"" + prefix + "/bin/fernhop-open\" \"%s\";"));
}

TEST_F(Packaging, EntriesAreValid) {
    if (!support::isInstalled("desktop-file-validate"))
        GTEST_SKIP() << "desktop-file-utils is not installed";
    for (const auto &folder : {home.home() + "/.local", home.home() + "/odd $folder `x`/100%"}) {
        prefix = folder;
        install();
        for (const auto *name : {"org.fernhop.Fernhop.desktop", "org.fernhop.Fernhop.Resident.desktop"}) {
            files::remove(home.root() + "/output");
            EXPECT_EQ(run({"desktop-file-validate", applications() + '/' + name}), 0);
            EXPECT_EQ(contents(home.root() + "/output"), "");
        }
    }
}

TEST_F(Packaging, MetadataIsValid) {
    if (!support::isInstalled("appstreamcli"))
        GTEST_SKIP() << "appstream is not installed";
    install();
    EXPECT_EQ(run({"appstreamcli", "validate", "--no-net",
                   prefix + "/share/metainfo/org.fernhop.Fernhop.metainfo.xml"}),
              0)
        << contents(home.root() + "/output");
}

TEST_F(Packaging, IconsHaveTheirSizes) {
    install();
    EXPECT_TRUE(files::exists(prefix + "/share/icons/hicolor/scalable/apps/org.fernhop.Fernhop.svg"));
    for (const unsigned size : {48U, 64U, 128U, 256U}) {
        const auto length = std::to_string(size);
        const auto png = contents(prefix + "/share/icons/hicolor/" + length + 'x' + length +
                                  "/apps/org.fernhop.Fernhop.png");
        ASSERT_GT(png.size(), 24U);
        const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(png[index]); };
        EXPECT_EQ(256U * byte(18) + byte(19), size);
        EXPECT_EQ(256U * byte(22) + byte(23), size);
    }
}

// What GIO makes of the entry counts. It finds no program in a folder with a percent sign, however that is
// written.
TEST_F(Packaging, AnyPrefixWorks) {
    if (!support::isInstalled("gio"))
        GTEST_SKIP() << "gio is not installed";
    prefix = home.home() + "/odd $folder `x` \"y\"";
    install();
    home.writeProgram(prefix + "/bin/fernhop-open",
                      "#!/bin/sh\nprintf %s \"$1\" >'" + home.root() + "/got'\n");
    EXPECT_EQ(
        run({"gio", "launch", applications() + "/org.fernhop.Fernhop.desktop", "https://example.org/%41"}), 0)
        << contents(home.root() + "/output");
    EXPECT_TRUE(
        support::waitUntil([&] { return contents(home.root() + "/got") == "https://example.org/%41"; }));
}

TEST_F(Packaging, ThePackageFolderIsNotPartOfThePaths) {
    prefix = "/usr";
    install({{"DESTDIR", home.root() + "/package"}});
    const auto entry = home.root() + "/package/usr/share/applications/org.fernhop.Fernhop.desktop";
    EXPECT_TRUE(hasLine(entry, "Exec=/usr/bin/fernhop-open %U"));
    EXPECT_FALSE(files::exists(home.root() + "/package/usr/share/applications/mimeinfo.cache"));
}

TEST_F(Packaging, DesktopsFindTheSchemes) {
    if (!support::isInstalled("update-desktop-database"))
        GTEST_SKIP() << "desktop-file-utils is not installed";
    install();
    EXPECT_TRUE(
        hasLine(applications() + "/mimeinfo.cache", "x-scheme-handler/https=org.fernhop.Fernhop.desktop;"));
}

/// Uninstalls as `make uninstall` does, from a checkout of its own folder structure.
class Uninstalling : public Packaging {
  protected:
    int uninstall() const { return run({support::sourceFolder() + "/scripts/uninstall.sh", prefix, build}); }
};

TEST_F(Uninstalling, LeavesWhatWasThereBefore) {
    home.write(prefix + "/share/applications/other.desktop", "[Desktop Entry]\n");
    install();
    EXPECT_EQ(uninstall(), 0) << contents(home.root() + "/output");
    std::vector<std::string> left;
    for (const auto &item : files::recursive_directory_iterator(prefix)) {
        if (item.is_regular_file() && item.path().filename() != "mimeinfo.cache")
            left.push_back(item.path().filename());
    }
    EXPECT_EQ(left, std::vector<std::string>{"other.desktop"});
}

TEST_F(Uninstalling, LeavesNothingOfItsOwn) {
    prefix = home.root() + "/elsewhere";
    files::create_directory(prefix);
    install();
    EXPECT_EQ(uninstall(), 0) << contents(home.root() + "/output");
    EXPECT_TRUE(!files::exists(prefix) || files::is_empty(prefix));
}

TEST_F(Uninstalling, GivesTheRoleBackFirst) {
    install();
    const auto entry = applications() + "/org.fernhop.Fernhop.desktop";
    home.writeProgram(prefix + "/bin/fernhop",
                      "#!/bin/sh\ntest -f '" + entry + "' && echo \"$@\" >>'" + home.root() + "/calls'\n");
    EXPECT_EQ(uninstall(), 0);
    EXPECT_EQ(contents(home.root() + "/calls"), "routing off\nquit\n");
}

TEST_F(Uninstalling, EndsTheAutostart) {
    install();
    const auto link = home.config() + "/autostart/org.fernhop.Fernhop.Resident.desktop";
    EXPECT_FALSE(files::exists(link));
    const auto script = support::sourceFolder() + "/scripts/autostart.sh";
    EXPECT_EQ(run({script, "on", prefix}), 0) << contents(home.root() + "/output");
    EXPECT_TRUE(hasLine(link, "Exec=" + prefix + "/bin/fernhop"));
    EXPECT_EQ(uninstall(), 0);
    EXPECT_FALSE(files::is_symlink(link));
}

TEST_F(Uninstalling, LeavesTheUsersAutostart) {
    install();
    const auto own = home.config() + "/autostart/org.fernhop.Fernhop.Resident.desktop";
    home.write(own, "mine");
    EXPECT_EQ(uninstall(), 0);
    EXPECT_EQ(contents(own), "mine");
}

} // namespace
} // namespace fernhop
