// Fernhop's icon in the tray of a bar on a Wayland compositor.

#include "ShownIcon.h"
#include "support/Folders.h"
#include "support/HeadlessSway.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace fernhop::desktoptest {
namespace {

constexpr const char *settings =
    R"({"layer": "top", "position": "top", "height": 30, "modules-left": ["tray"], "tray": {"icon-size": 24}})";
constexpr const char *style = "* { margin: 0; padding: 0; } window#waybar { background: #ffffff; }";

/// Sway with a bus and waybar, all for one home.
class WaybarTest : public testing::Test {
  protected:
    void SetUp() override {
        for (const char *program : {"sway", "waybar", "grim", "convert"})
            if (!support::isInstalled(program))
                GTEST_SKIP() << "needs " << program;
        sway = std::make_unique<support::HeadlessSway>();
        const auto &home = sway->home();
        bus = std::make_unique<support::PrivateBus>(home);
        environment =
            bus->environment() +
            support::Environment{{"LC_ALL", "C.UTF-8"}, {"NO_AT_BRIDGE", "1"}, {"GTK_A11Y", "none"}};
        home.write(home.config() + "/waybar/config", settings);
        home.write(home.config() + "/waybar/style.css", style);
    }

    [[nodiscard]] std::unique_ptr<support::ChildProcess> startFernhop() const {
        return std::make_unique<support::ChildProcess>(
            support::Command{{support::buildFolder() + "/bin/fernhop"}, sway->environment() + environment});
    }
    [[nodiscard]] bool iconShows() const {
        const std::string file = sway->home().home() + "/screen.ppm";
        return sway->start({"grim", "-t", "ppm", "-g", "0,0 24x30", file})->wait() == 0 &&
               hasInk(file, {0, 0, 24, 30});
    }

    std::unique_ptr<support::HeadlessSway> sway;
    std::unique_ptr<support::PrivateBus> bus;
    support::Environment environment;
};

TEST_F(WaybarTest, ShowsTheIcon) {
    const auto fernhop = startFernhop();
    const auto waybar = sway->start({"waybar"}, environment);
    EXPECT_TRUE(support::waitUntil([this] { return iconShows(); }));
    EXPECT_TRUE(fernhop->isRunning());
    EXPECT_FALSE(hasToolkit(fernhop->pid()));
}

} // namespace
} // namespace fernhop::desktoptest
