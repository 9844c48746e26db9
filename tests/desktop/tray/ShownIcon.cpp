#include "ShownIcon.h"

#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>

namespace fernhop::desktoptest {
namespace {

std::string geometry(const ScreenArea &area) {
    return std::to_string(area.width) + "x" + std::to_string(area.height) + "+" + std::to_string(area.left) +
           "+" + std::to_string(area.top);
}

bool isHandler(PanelSession &session) {
    return session.defaultHandler() == "org.fernhop.Fernhop.desktop";
}

/// The pixels of a picture in a file, each as its brightness; none when it cannot be read.
std::string brightnessOf(const std::string &file) {
    const std::string gray = file + ".gray";
    const bool isRead = support::ChildProcess({{"convert", file, "-depth", "8", gray}, {}}).wait() == 0;
    return isRead ? contentsOf(gray) : "";
}

template <typename Test>
auto count(const std::string &brightness, Test test) {
    return std::count_if(brightness.begin(), brightness.end(),
                         [&](char pixel) { return test(static_cast<unsigned char>(pixel)); });
}

/// A picture of an area of the screen, as brightnesses.
std::string screenAt(PanelSession &session, const ScreenArea &area) {
    const std::string file = session.home.root() + "/screen.png";
    if (session.run({"import", "-window", "root", "-crop", geometry(area), "+repage", file}) != 0)
        return "";
    return brightnessOf(file);
}

bool isInk(const std::string &brightness, const ScreenArea &area) {
    const auto dark = count(brightness, [](int pixel) { return pixel < 64; });
    const auto light = count(brightness, [](int pixel) { return pixel > 192; });
    return dark > 30 && light > area.width * area.height / 3;
}

} // namespace

bool hasInk(const std::string &file, const ScreenArea &area) {
    return isInk(brightnessOf(file), area);
}

bool inkShows(PanelSession &session, const ScreenArea &area) {
    return isInk(screenAt(session, area), area);
}

bool lightShows(PanelSession &session, const ScreenArea &area) {
    return count(screenAt(session, area), [](int pixel) { return pixel > 96; }) > 30;
}

bool openMenuAt(PanelSession &session, const OpenMenus &menus, const ScreenArea &area, int button) {
    const std::string x = std::to_string(area.left + area.width / 2),
                      y = std::to_string(area.top + area.height / 2);
    // A panel that is about to show the icon, or to take the former menu away, misses a click.
    using Clock = std::chrono::steady_clock;
    auto nextClick = Clock::now();
    auto pause = std::chrono::seconds(1);
    return support::waitUntil([&] {
        if (menus.count() == 0 && Clock::now() >= nextClick) {
            (void)session.input({"mousemove", x, y, "click", std::to_string(button)});
            pause *= 2;
            nextClick = Clock::now() + pause;
        }
        return menus.count() == 1;
    });
}

bool firstItemTurnsRoutingOn(PanelSession &session) {
    return !isHandler(session) && session.input({"key", "Down", "key", "Return"}) == 0 &&
           support::waitUntil([&] { return isHandler(session); });
}

bool routingCanBeTurnedOnAt(PanelSession &session, const ScreenArea &area, int button) {
    const OpenMenus menus(session.display->name());
    return openMenuAt(session, menus, area, button) && firstItemTurnsRoutingOn(session);
}

std::string toldIconPlace(PanelSession &session) {
    EXPECT_EQ(session.fernhop({"status", "--json"}), 0);
    const auto icon = nlohmann::json::parse(session.output(), nullptr, false).value("icon", nlohmann::json());
    return icon.is_string() ? icon.get<std::string>() : "";
}

bool hasToolkit(pid_t process) {
    return contentsOf("/proc/" + std::to_string(process) + "/maps").find("libQt") != std::string::npos;
}

std::string missingFor(const std::vector<std::string> &programs) {
    const std::vector<std::string> always = {"Xvfb", "openbox", "xdotool", "gio", "import", "convert"};
    for (const auto *list : {&programs, &always})
        for (const auto &program : *list)
            if (!support::isInstalled(program))
                return program;
    return "";
}

} // namespace fernhop::desktoptest
