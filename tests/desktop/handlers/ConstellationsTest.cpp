#include "platform/linux/applications/InstalledDesktopEntries.h"
#include "platform/linux/defaulthandler/FreedesktopLaunchServices.h"
#include "support/ChildProcess.h"
#include "support/KdeSession.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <sstream>

namespace fernhop::freedesktop {
namespace {

using support::operator+;

constexpr const char *fernhopID = "org.fernhop.Fernhop";
constexpr std::array applications = {"alpha", "beta", "gamma", "gone", fernhopID};

/// A desktop, and the program of it that tells which application opens a link.
struct Desktop {
    std::string name;
    std::vector<std::string> question;
    support::Environment environment;
    int constellations;
};

void PrintTo(const Desktop &desktop, std::ostream *out) {
    *out << desktop.name;
}

/// Folders with lists, caches and entries that say different things about one scheme.
class Constellation {
  public:
    explicit Constellation(unsigned number) : random(number) {
        support::writeKdeSystem(home);
        for (const std::string id : applications) {
            if (id != "gone" && !oneIn(4))
                writeEntry(id);
        }
        for (const auto &folder : {home.config(), home.root() + "/etc"})
            writeLists(folder);
        for (const auto &folder : {home.applications(), home.systemData() + "/applications"}) {
            writeLists(folder);
            if (oneIn(2))
                write(folder + "/mimeinfo.cache", group("MIME Cache"));
            if (oneIn(6))
                write(folder + "/defaults.list", group("Default Applications"));
        }
    }

    support::TemporaryHome home;
    std::string text; ///< of all files, for people
    std::set<std::string> startable;

  private:
    bool oneIn(unsigned number) { return random() % number == 0; }

    void write(const std::string &path, const std::string &contents) {
        home.write(path, contents);
        text += path.substr(home.root().size()) + ":\n" + contents;
    }

    void writeEntry(const std::string &id) {
        const auto folder = oneIn(2) ? home.applications() : home.systemData() + "/applications";
        const std::string program = oneIn(8) ? "/nowhere/browser" : "true";
        if (program == "true")
            startable.insert(id);
        write(folder + '/' + id + ".desktop",
              "[Desktop Entry]\nType=Application\nName=" + id + "\nExec=" + program +
                  " %u\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n" +
                  "InitialPreference=" + std::to_string(10 + text.size() % 1000) + '\n');
    }

    std::string group(const std::string &name) {
        std::string list;
        do {
            list += std::string(applications.at(random() % applications.size())) + ".desktop;";
        } while (oneIn(2));
        return '[' + name + "]\nx-scheme-handler/https=" + list + '\n';
    }

    void writeLists(const std::string &folder) {
        for (const std::string name : {"gnome-mimeapps.list", "kde-mimeapps.list", "mimeapps.list"}) {
            std::string contents;
            if (oneIn(5))
                contents += group("Default Applications");
            if (oneIn(4))
                contents += group("Added Associations");
            if (oneIn(4))
                contents += group("Removed Associations");
            if (!contents.empty())
                write(folder + '/' + name, contents);
        }
    }

    std::mt19937 random;
};

std::vector<Desktop> desktops() {
    return {{"GNOME", {"gio", "mime", "x-scheme-handler/https"}, {}, 80},
            {"sway", {"xdg-mime", "query", "default", "x-scheme-handler/https"}, {}, 60},
            {"KDE", {"xdg-mime", "query", "default", "x-scheme-handler/https"}, support::kdeSession(), 25}};
}

class Constellations : public testing::TestWithParam<Desktop> {
  protected:
    static std::string answer(const Constellation &constellation) {
        const auto &home = constellation.home;
        const auto output = home.root() + "/output";
        support::Command question{
            GetParam().question,
            home.environment() + GetParam().environment +
                support::Environment{{"XDG_CURRENT_DESKTOP", GetParam().name}, {"LC_ALL", "C"}},
            output};
        support::ChildProcess(question).wait();
        std::ifstream file(output);
        for (std::string line; std::getline(file, line);) {
            // GLib warns first.
            if (!line.ends_with(".desktop") || line.starts_with("("))
                continue;
            const auto start = line.rfind(' ') + 1;
            auto id = line.substr(start, line.size() - start - 8);
            // xdg-mime names what xdg-open then fails to start.
            const bool isStarted = GetParam().name != "sway" || constellation.startable.contains(id);
            return isStarted ? id : "nothing";
        }
        return "nothing";
    }

    static std::string ours(const Constellation &constellation) {
        const support::ScopedEnvironment environment(
            constellation.home.environment() +
            support::Environment{{"XDG_CURRENT_DESKTOP", GetParam().name}});
        const InstalledDesktopEntries entries(applicationPlaces(Environment::current()));
        const FreedesktopLaunchServices services(XdgSession::of(Environment::current()), entries, fernhopID);
        return services.copyDefaultHandlerForUrlScheme("https").value_or("nothing");
    }
};

INSTANTIATE_TEST_SUITE_P(Handlers, Constellations, testing::ValuesIn(desktops()),
                         [](const auto &info) { return info.param.name; });

TEST_P(Constellations, AreReadAsTheDesktopReadsThem) {
    if (!support::isInstalled(GetParam().question.front()) ||
        (GetParam().name == "KDE" && !support::isKdeInstalled()))
        GTEST_SKIP() << "not installed: " << GetParam().question.front();
    for (int number = 0; number < GetParam().constellations; ++number) {
        const Constellation constellation(static_cast<unsigned>(number));
        EXPECT_EQ(ours(constellation), answer(constellation)) << "constellation " << number << '\n'
                                                              << constellation.text;
    }
}

} // namespace
} // namespace fernhop::freedesktop
