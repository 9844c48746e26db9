// Reading the default handler, which each rebuild of the menu does several times, beside GIO's own answer.

#include "platform/linux/applications/ApplicationPlaces.h"
#include "platform/linux/applications/InstalledDesktopEntries.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/defaulthandler/FreedesktopLaunchServices.h"
#include "support/TemporaryHome.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

namespace fernhop::freedesktop {
namespace {

/// A user with 300 applications, each named in 60 languages, of whom one is the default.
class Applications {
  public:
    Applications() {
        std::string names;
        for (int language = 0; language < 60; ++language)
            names += "Name[l" + std::to_string(language) + "]=An application with a name\n";
        std::string associations = "[Added Associations]\n";
        for (int number = 0; number < 300; ++number) {
            const auto id = "org.example.App" + std::to_string(number);
            home.writeDesktopEntry(id, "[Desktop Entry]\nType=Application\nName=" + id + '\n' + names +
                                           "Exec=sh %u\nMimeType=x-scheme-handler/https;text/html;\n");
            associations += "application/x-" + std::to_string(number) + '=' + id + ".desktop;\n";
        }
        home.write(home.config() + "/mimeapps.list",
                   associations +
                       "[Default Applications]\nx-scheme-handler/https=org.example.App7.desktop\n");
        usleep(200'000); // as old as a file that nobody changes just now
    }

    support::TemporaryHome home;
    support::ScopedEnvironment environment{home.environment()};
};

void read(benchmark::State &state, const std::string &desktop) {
    const Applications applications;
    const InstalledDesktopEntries entries(applicationPlaces(Environment::current()));
    auto environment = Environment::current();
    environment.set("XDG_CURRENT_DESKTOP", desktop);
    const FreedesktopLaunchServices services(XdgSession::of(environment), entries, "org.fernhop.Fernhop");
    for (auto _ : state)
        benchmark::DoNotOptimize(services.copyDefaultHandlerForUrlScheme("https"));
}

void BM_ReadInGnome(benchmark::State &state) {
    read(state, "GNOME");
}
BENCHMARK(BM_ReadInGnome);

void BM_ReadInXfce(benchmark::State &state) {
    read(state, "XFCE");
}
BENCHMARK(BM_ReadInXfce);

// GIO keeps what it read of a process's first folders, so this one looks at the machine's own applications.
void BM_ReadByGio(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(GObjectPointer<GAppInfo>(g_app_info_get_default_for_uri_scheme("https")));
}
BENCHMARK(BM_ReadByGio);

} // namespace
} // namespace fernhop::freedesktop

BENCHMARK_MAIN();
