// Reading the URL rules on each link, from the file to the records. The rival reads and parses the file each
// time, as a program that keeps nothing would.

#include "platform/linux/settings/PropertyListDefaults.h"
#include "settings/Preferences.h"
#include "support/TemporaryHome.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace fernhop {
namespace {

/// A settings file with so many rules, as old as a file is when a link arrives.
class SettingsWithRules {
  public:
    explicit SettingsWithRules(std::int64_t count) {
        std::vector<URLRule> rules;
        for (std::int64_t number = 0; number < count; ++number) {
            const std::string text = std::to_string(100'000 + number);
            rules.push_back({"3F2504E0-4F89-41D3-9A0C-0305E8" + text, "*://host-" + text + ".example.org/*",
                             "org.mozilla.firefox"});
        }
        freedesktop::PropertyListDefaults defaults(path());
        Preferences(defaults).setURLRules(rules);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }

    [[nodiscard]] std::string path() const { return home.config() + "/fernhop/org.fernhop.Fernhop.plist"; }

  private:
    support::TemporaryHome home;
};

void readUnchangedRules(benchmark::State &state) {
    const SettingsWithRules settings(state.range(0));
    freedesktop::PropertyListDefaults defaults(settings.path());
    const Preferences preferences(defaults);
    benchmark::DoNotOptimize(preferences.urlRules());
    for (auto _ : state)
        benchmark::DoNotOptimize(preferences.urlRules());
}
BENCHMARK(readUnchangedRules)->Arg(10)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

void readUnchangedData(benchmark::State &state) {
    const SettingsWithRules settings(state.range(0));
    freedesktop::PropertyListDefaults defaults(settings.path());
    benchmark::DoNotOptimize(defaults.dataForKey(settingsKey::urlRules));
    for (auto _ : state)
        benchmark::DoNotOptimize(defaults.dataForKey(settingsKey::urlRules));
}
BENCHMARK(readUnchangedData)->Arg(10)->Arg(10'000)->Unit(benchmark::kMicrosecond);

void readFileAgain(benchmark::State &state) {
    const SettingsWithRules settings(state.range(0));
    for (auto _ : state) {
        freedesktop::PropertyListDefaults defaults(settings.path());
        benchmark::DoNotOptimize(Preferences(defaults).urlRules());
    }
}
BENCHMARK(readFileAgain)->Arg(10)->Arg(10'000)->Unit(benchmark::kMicrosecond);

void writeRule(benchmark::State &state) {
    const SettingsWithRules settings(state.range(0));
    freedesktop::PropertyListDefaults defaults(settings.path());
    Preferences preferences(defaults);
    for (auto _ : state)
        preferences.addURLRule("*://host-100000.example.org/*", "org.mozilla.firefox");
}
BENCHMARK(writeRule)->Arg(10)->Arg(10'000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace fernhop

BENCHMARK_MAIN();
