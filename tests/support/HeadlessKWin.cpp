#include "support/HeadlessKWin.h"

#include "support/Waiting.h"

#include <signal.h>

#include <filesystem>
#include <stdexcept>

namespace fernhop::support {

namespace {

constexpr auto displayName = "wayland-kwin";

} // namespace

HeadlessKWin::HeadlessKWin() {
    // The installed program carries a file capability that containers refuse; a copy carries none. Its
    // virtual output asks for the program's name.
    const std::string program = ownHome.root() + "/kwin_wayland";
    std::filesystem::copy_file("/usr/bin/kwin_wayland", program);
    Command command{
        {program, "--virtual", "--socket", displayName, "--no-lockscreen", "--no-global-shortcuts"},
        ownHome.environment()};
    command.environment = command.environment + Environment{{"KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1"},
                                                            {"KWIN_COMPOSE", "Q"},
                                                            {"QT_QPA_PLATFORM", std::nullopt},
                                                            {"XDG_SESSION_TYPE", "wayland"}};
    compositor = std::make_unique<ChildProcess>(command);
    const std::string socket = ownHome.runtime() + "/" + displayName;
    const bool ready = waitUntil([&] { return !compositor->isRunning() || std::filesystem::exists(socket); });
    if (!ready || !compositor->isRunning())
        throw std::runtime_error("kwin_wayland did not start");
}

Environment HeadlessKWin::environment() const {
    return ownHome.environment() + Environment{{"WAYLAND_DISPLAY", ownHome.runtime() + "/" + displayName},
                                               {"XDG_SESSION_TYPE", "wayland"},
                                               {"XDG_CURRENT_DESKTOP", "KDE"}};
}

std::unique_ptr<ChildProcess> HeadlessKWin::start(std::vector<std::string> arguments,
                                                  const Environment &more) const {
    return std::make_unique<ChildProcess>(Command{std::move(arguments), environment() + more});
}

void HeadlessKWin::stop() {
    compositor->signal(SIGSTOP);
}

void HeadlessKWin::resume() {
    compositor->signal(SIGCONT);
}

void HeadlessKWin::kill() {
    compositor->signal(SIGKILL);
    compositor->wait();
}

} // namespace fernhop::support
