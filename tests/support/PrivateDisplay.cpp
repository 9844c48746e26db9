#include "support/PrivateDisplay.h"

#include "support/ReadyPipe.h"

#include <signal.h>

#include <filesystem>
#include <stdexcept>

namespace fernhop::support {

PrivateDisplay::PrivateDisplay(const TemporaryHome &home) {
    ReadyPipe ready;
    Command serverCommand{{"Xvfb", "-displayfd", std::to_string(ready.writer()), "-screen", "0",
                           "1280x800x24", "-nolisten", "tcp", "-noreset"},
                          home.environment()};
    serverCommand.keptDescriptors = {ready.writer()};
    server = std::make_unique<ChildProcess>(serverCommand);
    const std::string number = ready.readLine();
    if (number.empty())
        throw std::runtime_error("Xvfb did not start");
    displayName = ":" + number;
    // It ends without its theme, which is the machine's.
    const auto windowManagerEnvironment =
        home.environment() + environment() + Environment{{"XDG_DATA_DIRS", "/usr/share"}};
    // Windows that are shown before it has looked around may escape it.
    const std::string sign = home.root() + "/openbox-on-display-" + number;
    std::filesystem::remove(sign); // of a display that had the number before
    windowManager = std::make_unique<ChildProcess>(
        Command{{"openbox", "--startup", "touch " + sign}, windowManagerEnvironment});
    const bool settled =
        waitUntil([&] { return !windowManager->isRunning() || std::filesystem::exists(sign); });
    if (!settled || !windowManager->isRunning())
        throw std::runtime_error("openbox did not start");
}

void PrivateDisplay::stop() {
    server->signal(SIGSTOP);
}

void PrivateDisplay::resume() {
    server->signal(SIGCONT);
}

void PrivateDisplay::kill() {
    server->signal(SIGKILL);
    server->wait();
}

} // namespace fernhop::support
