// The catalog's scan of 1,000 desktop entries against GIO's list of the same, both with the files in the page
// cache.

#include "catalog/BrowserCatalog.h"
#include "platform/linux/applications/DesktopBundles.h"
#include "platform/linux/applications/PosixFileManager.h"
#include "support/Environment.h"
#include "support/TemporaryHome.h"

#include <benchmark/benchmark.h>
#include <gio/gio.h>

#include <array>

namespace fernhop {
namespace {

constexpr std::size_t entryCount = 1000;

/// An entry as they are installed: translated, with an action.
std::string entryText(std::size_t number) {
    constexpr std::array languages{"ar", "bg", "ca", "cs", "da",    "de",    "el", "es",
                                   "et", "eu", "fi", "fr", "gl",    "he",    "hu", "id",
                                   "it", "ja", "ko", "nl", "pt_BR", "pt_PT", "ru", "sv"};
    const std::string name = "Application " + std::to_string(number);
    std::string text = "[Desktop Entry]\nVersion=1.0\nType=Application\nName=" + name + "\n";
    for (const std::string language : languages) {
        text += "Name[" + language + "]=" + name + " (" + language + ")\n";
        text += "Comment[" + language + "]=What this application does for people who read " + language + "\n";
    }
    text += "Exec=/bin/true --open %U\nIcon=application\nTerminal=false\nCategories=Network;Utility;\n";
    text += number % 100 == 0 ? "MimeType=text/html;x-scheme-handler/http;x-scheme-handler/https;\n"
                              : "MimeType=text/plain;image/png;\n";
    text += "Actions=new;\n\n[Desktop Action new]\nExec=/bin/true --new\n";
    for (const std::string language : languages)
        text += "Name[" + language + "]=New (" + language + ")\n";
    return text;
}

/// The machine whose applications are counted, made before GIO first looks at the environment.
class Machine {
  public:
    Machine() {
        for (std::size_t i = 0; i < entryCount; ++i)
            home.write(home.systemData() + "/applications/org.example.App" + std::to_string(i) + ".desktop",
                       entryText(i));
    }

  private:
    support::TemporaryHome home;
    support::ScopedEnvironment environment{home.environment()};
};

void fernhopScan(benchmark::State &state) {
    const auto places = freedesktop::applicationPlaces(freedesktop::Environment::current());
    const freedesktop::InstalledDesktopEntries entries(places);
    const freedesktop::DesktopBundles bundles(entries);
    const freedesktop::PosixFileManager files(places.home);
    const ApplicationCatalog catalog(files, bundles, freedesktop::applicationLayout(places));
    std::size_t found = 0;
    for (auto step : state)
        found = catalog.installedApplications("org.fernhop.Fernhop").size();
    state.counters["applications"] = static_cast<double>(found);
}

void gioScan(benchmark::State &state) {
    std::size_t found = 0;
    for (auto step : state) {
        GList *all = g_app_info_get_all();
        found = g_list_length(all);
        g_list_free_full(all, g_object_unref);
    }
    state.counters["applications"] = static_cast<double>(found);
}

void fernhopLookup(benchmark::State &state) {
    const freedesktop::InstalledDesktopEntries entries(
        freedesktop::applicationPlaces(freedesktop::Environment::current()));
    for (auto step : state)
        benchmark::DoNotOptimize(freedesktop::applicationUrl(entries, "org.example.App500"));
}

BENCHMARK(fernhopScan)->Name("catalog scan, 1000 entries")->Unit(benchmark::kMillisecond);
BENCHMARK(gioScan)->Name("g_app_info_get_all, the same entries")->Unit(benchmark::kMillisecond);
BENCHMARK(fernhopLookup)->Name("lookup by ID")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace fernhop

int main(int argc, char **argv) {
    const fernhop::Machine machine;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
