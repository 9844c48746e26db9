// What Fernhop costs while nobody uses it: how often it runs in five seconds without a link, and its
// proportional memory, with 300 applications and 5 browsers; before and after its first dialog.

#include "desktop/links/LinkSession.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>
#include <utility>

namespace {

using namespace fernhop::support;
using fernhop::desktoptest::LinkSession;

constexpr int applications = 295;
constexpr int browsers = 5;
constexpr std::chrono::seconds idleTime{5};

/// The number behind each line of a file of /proc that begins with `name`, added up.
long valuesOf(const std::filesystem::path &file, const std::string &name) {
    std::ifstream lines(file);
    long sum = 0;
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(name))
            sum += std::stol(line.substr(name.size()));
    return sum;
}

/// How often the threads of a process stopped running until now.
long contextSwitches(pid_t process) {
    long sum = 0;
    for (const auto &thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task"))
        for (const char *name : {"voluntary_ctxt_switches:", "nonvoluntary_ctxt_switches:"})
            sum += valuesOf(thread.path() / "status", name);
    return sum;
}

/// Start-up is over, and what a dialog left behind is tidied up, when a second has passed without a switch.
void settle(pid_t process) {
    for (long before = -1, now = contextSwitches(process); now != before;) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        before = std::exchange(now, contextSwitches(process));
    }
}

void report(const char *when, pid_t process) {
    settle(process);
    const long before = contextSwitches(process);
    std::this_thread::sleep_for(idleTime);
    const long switches = contextSwitches(process) - before;
    const long memory = valuesOf("/proc/" + std::to_string(process) + "/smaps_rollup", "Pss:");
    std::printf("%-28s context switches in %ld s: %ld   proportional memory: %.1f MB\n", when,
                static_cast<long>(idleTime.count()), switches, static_cast<double>(memory) / 1024);
}

void install(const LinkSession &session) {
    for (int number = 0; number < applications + browsers; ++number) {
        const auto id = "org.example.App" + std::to_string(number);
        session.home.writeDesktopEntry(id,
                                       "[Desktop Entry]\nType=Application\nName=" + id + "\nExec=true %u\n" +
                                           (number < browsers ? "MimeType=x-scheme-handler/https;\n" : ""));
    }
}

void openAndCloseDialog(LinkSession &session) {
    const auto window = [&](const std::vector<std::string> &more) {
        std::vector<std::string> words = {"xdotool", "search", "--onlyvisible", "--name", "建议反馈"};
        words.insert(words.end(), more.begin(), more.end());
        return session.run(words) == 0;
    };
    (void)session.fernhop({"dialog", "feedback"});
    (void)waitUntil([&] { return window({"windowactivate", "--sync", "key", "Escape"}); });
    (void)waitUntil([&] { return !window({}); });
}

} // namespace

int main() {
    LinkSession session;
    install(session);
    std::optional<PrivateDisplay> display;
    if (PrivateDisplay::isAvailable() && isInstalled("xdotool"))
        session.environment = session.environment + display.emplace(session.home).environment();
    session.startBus();
    session.startFernhop();
    report("Fernhop, started", session.resident->pid());
    if (!display)
        return 0;
    openAndCloseDialog(session);
    report("after its first dialog", session.resident->pid());
    return 0;
}
