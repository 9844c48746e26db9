#include "platform/linux/source/ProgramNames.h"

#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/base/PassOnPrograms.h"
#include "platform/linux/base/Text.h"

#include <algorithm>
#include <array>

namespace fernhop::freedesktop {

namespace {

using namespace std::string_view_literals;

constexpr std::array desktopShells{"budgie-panel"sv,
                                   "cinnamon"sv,
                                   "gnome-flashback"sv,
                                   "gnome-panel"sv,
                                   "gnome-shell"sv,
                                   "i3"sv,
                                   "lxpanel"sv,
                                   "lxqt-panel"sv,
                                   "lxqt-runner"sv,
                                   "marco"sv,
                                   "mate-panel"sv,
                                   "openbox"sv,
                                   "org.gnome.Shell"sv,
                                   "org.kde.krunner"sv,
                                   "org.kde.kwin_wayland"sv,
                                   "org.kde.plasmashell"sv,
                                   "pcmanfm-desktop"sv,
                                   "pcmanfm-qt-desktop-pref"sv,
                                   "plasmashell"sv,
                                   "sway"sv,
                                   "waybar"sv,
                                   "xfce4-panel"sv,
                                   "xfdesktop"sv};

bool isAssignment(std::string_view argument) {
    const auto equals = argument.find('=');
    return equals != std::string_view::npos && argument.substr(0, equals).find('/') == std::string_view::npos;
}

/// The place of what `env` runs, after its options and assignments.
std::size_t commandOfEnv(const std::vector<ExecWord> &words) {
    std::size_t place = 1;
    for (; place < words.size(); ++place) {
        const std::string &word = words[place].text;
        if (word == "-u" || word == "--unset" || word == "-C" || word == "--chdir")
            ++place;
        else if (!isAssignment(word) && !word.starts_with('-'))
            break;
    }
    return place;
}

} // namespace

std::string programOfExec(const std::string &exec) {
    const auto words = execWords(exec);
    if (!words || words->empty())
        return {};
    const std::size_t place = fileNameOf(words->front().text) == "env" ? commandOfEnv(*words) : 0;
    if (place >= words->size())
        return {};
    const std::string_view name = fileNameOf((*words)[place].text);
    return isGenericProgram(name) ? std::string() : std::string(name);
}

std::string desktopIDOf(std::string_view text) {
    constexpr std::string_view suffix = ".desktop";
    std::string_view name = fileNameOf(text);
    if (name.ends_with(suffix))
        name.remove_suffix(suffix.size());
    return std::string(name);
}

bool isGenericProgram(std::string_view fileName) {
    return isPassOnProgram(fileName);
}

bool isInterpreter(std::string_view fileName) {
    return isPassOnProgram(fileName, PassOnProgram::Kind::interpreter);
}

bool isDesktopShell(std::string_view desktopID) {
    return std::ranges::find(desktopShells, desktopID) != desktopShells.end();
}

std::string asciiLowercased(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

} // namespace fernhop::freedesktop
