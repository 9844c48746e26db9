#include "ShownIcon.h"

#include "support/Waiting.h"

#include <algorithm>

namespace fernhop::desktoptest {
namespace {

std::string geometry(const ScreenArea &area) {
    return std::to_string(area.width) + "x" + std::to_string(area.height) + "+" + std::to_string(area.left) +
           "+" + std::to_string(area.top);
}

bool isHandler(PanelSession &session) {
    return session.defaultHandler() == "org.fernhop.Fernhop.desktop";
}

} // namespace

bool isIcon(const std::string &file, const ScreenArea &area) {
    const std::string gray = file + ".gray";
    if (support::ChildProcess({{"convert", file, "-depth", "8", gray}, {}}).wait() != 0)
        return false;
    const auto pixels = contentsOf(gray);
    const auto count = [&](auto test) { return std::count_if(pixels.begin(), pixels.end(), test); };
    const auto dark = count([](char pixel) { return static_cast<unsigned char>(pixel) < 64; });
    const auto light = count([](char pixel) { return static_cast<unsigned char>(pixel) > 192; });
    return dark > 30 && light > area.width * area.height / 3;
}

bool iconShows(PanelSession &session, const ScreenArea &area) {
    const std::string file = session.home.root() + "/screen.png";
    return session.run({"import", "-window", "root", "-crop", geometry(area), "+repage", file}) == 0 &&
           isIcon(file, area);
}

bool routingCanBeTurnedOnAt(PanelSession &session, const ScreenArea &area, int button) {
    const std::string x = std::to_string(area.left + area.width / 2),
                      y = std::to_string(area.top + area.height / 2);
    return !isHandler(session) && support::waitUntil([&] {
        (void)session.input({"mousemove", x, y, "click", std::to_string(button), "sleep", "1", "key", "Down",
                             "key", "Return", "sleep", "0.5"});
        return isHandler(session);
    });
}

bool hasToolkit(pid_t process) {
    return contentsOf("/proc/" + std::to_string(process) + "/maps").find("libQt6Widgets") !=
           std::string::npos;
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
