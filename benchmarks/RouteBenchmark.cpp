#include "app/AppDelegate.h"
#include "fakes/FakeDesktop.h"
#include "platform/Text.h"
#include "platform/linux/settings/PropertyListDefaults.h"
#include "rules/URLRuleCoding.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace fernhop {
namespace {

/// A controller on a desktop in memory whose settings are a real file.
class RoutingDesktop {
  public:
    explicit RoutingDesktop(std::size_t rules) : defaults(makeFolder() / "settings.plist") {
        desktop.installBrowser("browser.a");
        Platform platform = desktop.platform();
        Preferences(defaults).setURLRules(rulesThatMatchNothing(rules));
        controller.emplace(Platform{platform.application, platform.workspace, platform.workspaceNotifications,
                                    platform.distributedNotifications, platform.launchServices, defaults,
                                    platform.files, platform.bundles, platform.links, platform.log,
                                    platform.sound, platform.statusBar, platform.images, platform.alerts,
                                    platform.layout});
        controller->applicationDidFinishLaunching();
    }
    ~RoutingDesktop() { std::filesystem::remove_all(folder); }
    RoutingDesktop(const RoutingDesktop &) = delete;
    RoutingDesktop &operator=(const RoutingDesktop &) = delete;

    void route(const Url &url) {
        controller->route(url);
        desktop.workspace.opened.clear();
    }

  private:
    std::filesystem::path makeFolder() {
        std::string name = std::filesystem::temp_directory_path() / "fernhop-route-XXXXXX";
        if (!mkdtemp(name.data()))
            std::abort();
        return folder = name;
    }

    static std::vector<URLRule> rulesThatMatchNothing(std::size_t count) {
        std::vector<URLRule> rules;
        for (std::size_t number = 0; number < count; ++number) {
            const std::string host = "team" + std::to_string(number) + ".wiki.example";
            rules.push_back({text::makeUuid(), number % 2 ? host : "https://" + host + "/*", "browser.a"});
        }
        return rules;
    }

    fakes::FakeDesktop desktop;
    std::filesystem::path folder;
    freedesktop::PropertyListDefaults defaults;
    std::optional<AppDelegate> controller;
};

/// From the link to the call that opens it; every rule is read from the settings and tested.
void route(benchmark::State &state) {
    RoutingDesktop desktop(static_cast<std::size_t>(state.range(0)));
    const Url url = Url::parse("https://docs.example/team/issue/1?query=some%20words&page=2#section").value();
    for (auto _ : state)
        desktop.route(url);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(route)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity();

/// The whole menu for 300 applications and 5 browsers, up to the call that hands it to the status item.
void rebuildMenu(benchmark::State &state) {
    fakes::FakeDesktop desktop;
    for (int number = 0; number < 5; ++number)
        desktop.installBrowser("org.example.browser" + std::to_string(number));
    for (int number = 0; number < 295; ++number)
        desktop.installApplication("org.example.application" + std::to_string(number));
    AppDelegate controller(desktop.platform());
    controller.applicationDidFinishLaunching();
    for (auto _ : state)
        controller.rebuildMenu();
}
BENCHMARK(rebuildMenu)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace fernhop

BENCHMARK_MAIN();
