#include "support/HeadlessSway.h"

#include "support/Waiting.h"

#include <signal.h>

#include <filesystem>
#include <stdexcept>

namespace fernhop::support {

namespace {

constexpr auto displayName = "wayland-1";

} // namespace

HeadlessSway::HeadlessSway() : ownHome(ordinaryUser()) {
    const std::string configuration = ownHome.root() + "/sway.conf";
    ownHome.write(configuration, "xwayland disable\nfocus_on_window_activation focus\n");
    Command command{{"sway", "--config", configuration}, ownHome.environment()};
    command.environment = command.environment + Environment{{"WLR_BACKENDS", "headless"},
                                                            {"WLR_LIBINPUT_NO_DEVICES", "1"},
                                                            {"WLR_RENDERER", "pixman"},
                                                            {"SWAYSOCK", controlSocket()}};
    command.user = ordinaryUser();
    compositor = std::make_unique<ChildProcess>(command);
    const std::string socket = ownHome.runtime() + "/" + displayName;
    const bool ready = waitUntil([&] {
        return !compositor->isRunning() ||
               (std::filesystem::exists(socket) && std::filesystem::exists(controlSocket()));
    });
    if (!ready || !compositor->isRunning())
        throw std::runtime_error("sway did not start");
}

Environment HeadlessSway::environment() const {
    return ownHome.environment() + Environment{{"WAYLAND_DISPLAY", ownHome.runtime() + "/" + displayName},
                                               {"XDG_SESSION_TYPE", "wayland"},
                                               {"XDG_CURRENT_DESKTOP", "sway"},
                                               {"SWAYSOCK", controlSocket()}};
}

std::unique_ptr<ChildProcess> HeadlessSway::start(std::vector<std::string> arguments,
                                                  const Environment &more) const {
    Command command{std::move(arguments), environment() + more};
    command.user = ordinaryUser();
    return std::make_unique<ChildProcess>(command);
}

bool HeadlessSway::command(const std::string &text) const {
    return start({"swaymsg", "--socket", controlSocket(), text})->wait() == 0;
}

void HeadlessSway::stop() {
    compositor->signal(SIGSTOP);
}

void HeadlessSway::resume() {
    compositor->signal(SIGCONT);
}

void HeadlessSway::kill() {
    compositor->signal(SIGKILL);
    compositor->wait();
}

} // namespace fernhop::support
