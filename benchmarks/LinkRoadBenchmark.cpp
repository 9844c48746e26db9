// From the start of an opener to the browser's first instruction: fernhop-open with Fernhop running, beside
// `gio open` straight to the same browser, taking turns in one run.

#include "support/ChildProcess.h"
#include "support/Folders.h"
#include "support/PrivateBus.h"
#include "support/RecordingBrowser.h"
#include "support/Waiting.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace fernhop::support;

constexpr int rounds = 300;

long long now() {
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<long long>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

/// A session in which links go to a recording browser, directly or through Fernhop.
class Session {
  public:
    Session(const std::string &handler, const std::string &fernhopOpen) : environment(home.environment()) {
        home.writeDesktopEntry("web", browser.desktopEntry());
        home.writeDesktopEntry("org.fernhop.Fernhop",
                               "[Desktop Entry]\nType=Application\nName=Fernhop\nExec=" + fernhopOpen +
                                   " %U\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n");
        home.write(home.config() + "/mimeapps.list",
                   "[Default Applications]\nx-scheme-handler/https=" + handler +
                       ".desktop\nx-scheme-handler/http=" + handler + ".desktop\n");
        bus = std::make_unique<PrivateBus>(home, environment);
        environment = environment + bus->environment();
    }

    /// Nanoseconds from the start of `opener` to the browser's first instruction.
    long long timeOf(const std::vector<std::string> &opener) {
        const auto record = home.root() + "/web.record";
        std::filesystem::remove(record);
        auto command = Command{opener, environment};
        command.arguments.emplace_back("https://example.com/");
        const auto start = now();
        ChildProcess process(command);
        process.wait();
        if (!waitUntil([this] { return !browser.starts().empty(); }))
            return -1;
        return browser.starts()[0].nanoseconds - start;
    }

    TemporaryHome home;
    RecordingBrowser browser{home, "web"};
    Environment environment;
    std::unique_ptr<PrivateBus> bus;
};

void print(const char *name, std::vector<long long> times) {
    std::sort(times.begin(), times.end());
    const auto at = [&](double part) {
        return static_cast<double>(
                   times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))]) /
               1e6;
    };
    std::printf("%-44s median %7.3f ms   99th percentile %7.3f ms\n", name, at(0.5), at(0.99));
}

} // namespace

int main() {
    const std::string programs = buildFolder() + "/bin/";
    Session direct("web", programs + "fernhop-open");
    Session routed("org.fernhop.Fernhop", programs + "fernhop-open");
    ChildProcess resident({{programs + "fernhop"}, routed.environment});
    // The first call comes back when Fernhop has opened it, so from then on it runs.
    routed.timeOf({programs + "fernhop-open"});
    std::vector<long long> fernhop;
    std::vector<long long> gio;
    for (int round = 0; round < rounds; ++round) {
        fernhop.push_back(routed.timeOf({programs + "fernhop-open"}));
        gio.push_back(direct.timeOf({"gio", "open"}));
    }
    print("fernhop-open, Fernhop running", fernhop);
    print("gio open, straight to the browser", gio);
    resident.terminate();
    return 0;
}
