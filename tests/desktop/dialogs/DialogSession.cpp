#include "DialogSession.h"

#include "support/Waiting.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fernhop::desktoptest {
namespace {

std::string bytesOf(const std::string &path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

std::string DialogSession::missing() {
    return support::PrivateDisplay::isAvailable() && support::isInstalled("xdotool")
               ? ""
               : "needs Xvfb, openbox and xdotool";
}

DialogSession::DialogSession() : display(std::make_unique<support::PrivateDisplay>(home)) {
    environment = environment + display->environment();
    environment["LD_LIBRARY_PATH"] = std::filesystem::path(FERNHOP_BEEP_RECORDER).parent_path();
    environment["FERNHOP_TEST_BEEPS"] = home.root() + "/beeps";
    home.writeDesktopEntry("other", other.desktopEntry());
    startBus();
}

bool DialogSession::open(const std::vector<std::string> &words, const std::string &title) {
    std::vector<std::string> command{"dialog"};
    command.insert(command.end(), words.begin(), words.end());
    return fernhop(command) == 0 &&
           input({"search", "--sync", "--onlyvisible", "--name", title, "windowactivate", "--sync"});
}

bool DialogSession::input(std::vector<std::string> words) {
    words.insert(words.begin(), "xdotool");
    return run(words) == 0;
}

bool DialogSession::press(const std::vector<std::string> &keys) {
    std::vector<std::string> words{"key"};
    words.insert(words.end(), keys.begin(), keys.end());
    return input(words);
}

bool DialogSession::shows(const std::string &title) {
    return input({"search", "--onlyvisible", "--name", title});
}

bool DialogSession::closes(const std::string &title) {
    return support::waitUntil([&] { return !shows(title); });
}

bool DialogSession::tells(const std::vector<std::string> &command, const std::string &text) {
    return support::waitUntil(
        [&] { return fernhop(command) == 0 && output().find(text) != std::string::npos; });
}

pid_t DialogSession::program() const {
    const std::string process = std::to_string(resident->pid());
    const std::string children = bytesOf("/proc/" + process + "/task/" + process + "/children");
    return children.empty() ? 0 : std::stoi(children);
}

int DialogSession::beeps() const {
    const std::string lines = bytesOf(home.root() + "/beeps");
    return static_cast<int>(std::ranges::count(lines, '\n'));
}

std::string DialogSession::settings() const {
    return bytesOf(home.config() + "/fernhop/org.fernhop.Fernhop.plist");
}

} // namespace fernhop::desktoptest
