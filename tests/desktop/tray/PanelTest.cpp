// Fernhop's icon in the tray of a real panel, clicked with a real pointer.

#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace fernhop::desktoptest {
namespace {

using support::Environment;

constexpr const char *settingsService = "/usr/share/dbus-1/services/org.xfce.Xfconf.service";

constexpr const char *panelSettings = R"XML(<?xml version="1.0"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty"><property name="plugin-1" type="string" value="systray"/></property>
</channel>)XML";

std::string contentsOf(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class PanelTest : public testing::Test {
  protected:
    void SetUp() override {
        for (const char *program : {"xfce4-panel", "xdotool", "import"})
            if (!support::isInstalled(program))
                GTEST_SKIP() << program << " is not installed";
        if (!support::PrivateDisplay::isAvailable() || contentsOf(settingsService).empty())
            GTEST_SKIP() << "no private display";
        prepare();
        display = std::make_unique<support::PrivateDisplay>(home);
        environment = home.environment() + display->environment() +
                      Environment{{"LC_ALL", "C.UTF-8"}, {"NO_AT_BRIDGE", "1"}, {"GTK_A11Y", "none"}};
        bus = std::make_unique<support::PrivateBus>(home, environment);
        environment = environment + bus->environment();
    }

    void prepare() const {
        home.write(home.data() + "/dbus-1/services/org.xfce.Xfconf.service", contentsOf(settingsService));
        home.write(home.config() + "/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", panelSettings);
        home.writeDesktopEntry("web", "[Desktop Entry]\nType=Application\nName=Web_1 & Co\nExec=true %u\n"
                                      "MimeType=x-scheme-handler/http;x-scheme-handler/https;\n");
        home.writeDesktopEntry("org.fernhop.Fernhop",
                               "[Desktop Entry]\nType=Application\nName=Fernhop\nExec=fernhop-open %U\n"
                               "MimeType=x-scheme-handler/http;x-scheme-handler/https;\n");
        home.write(home.config() + "/mimeapps.list",
                   "[Default Applications]\nx-scheme-handler/http=web.desktop\n"
                   "x-scheme-handler/https=web.desktop\n");
    }
    [[nodiscard]] std::unique_ptr<support::ChildProcess> start(std::vector<std::string> command) const {
        return std::make_unique<support::ChildProcess>(
            support::Command{std::move(command), environment, home.root() + "/output"});
    }
    int run(std::vector<std::string> command) const { return start(std::move(command))->wait(); }

    /// Whether ink of the icon shows at the left end of the panel, where its only plug-in is.
    [[nodiscard]] bool iconShows() const {
        const std::string file = home.root() + "/screen.gray";
        if (run({"import", "-window", "root", "-crop", "30x30+0+0", "-depth", "8", file}) != 0)
            return false;
        const auto pixels = contentsOf(file);
        const auto count = [&](auto test) { return std::count_if(pixels.begin(), pixels.end(), test); };
        const auto dark = count([](char pixel) { return static_cast<unsigned char>(pixel) < 64; });
        const auto light = count([](char pixel) { return static_cast<unsigned char>(pixel) > 192; });
        return dark > 30 && light > 300;
    }
    [[nodiscard]] bool isHandler() const {
        return contentsOf(home.config() + "/mimeapps.list").find("https=org.fernhop.Fernhop") !=
               std::string::npos;
    }

    support::TemporaryHome home;
    Environment environment;
    std::unique_ptr<support::PrivateDisplay> display;
    std::unique_ptr<support::PrivateBus> bus;
};

TEST_F(PanelTest, ShowsTheIconOfAFernhopThatWasThereFirstAndItsMenuWorks) {
    const auto fernhop = start({FERNHOP_BUILD_DIR "/bin/fernhop"});
    const auto panel = start({"xfce4-panel", "--disable-wm-check"});
    ASSERT_TRUE(support::waitUntil([this] { return iconShows(); }));

    // The first item that can be chosen is the one that turns routing on.
    EXPECT_FALSE(isHandler());
    EXPECT_TRUE(support::waitUntil([this] {
        (void)run({"xdotool", "mousemove", "12", "15", "click", "1", "sleep", "1", "key", "Down", "key",
                   "Return", "sleep", "0.5"});
        return isHandler();
    })) << contentsOf(home.root() + "/output");
    EXPECT_TRUE(fernhop->isRunning());
}

} // namespace
} // namespace fernhop::desktoptest
