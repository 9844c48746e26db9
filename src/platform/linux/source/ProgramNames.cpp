#include "platform/linux/source/ProgramNames.h"

#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/base/Text.h"

#include <algorithm>
#include <array>

namespace fernhop::freedesktop {

namespace {

using namespace std::string_view_literals;

constexpr std::array interpreters{"ash"sv,    "bash"sv, "dash"sv, "fish"sv,   "gjs"sv,     "gjs-console"sv,
                                  "java"sv,   "ksh"sv,  "lua"sv,  "mksh"sv,   "mono"sv,    "node"sv,
                                  "nodejs"sv, "perl"sv, "php"sv,  "python"sv, "python2"sv, "pypy"sv,
                                  "ruby"sv,   "sh"sv,   "tcsh"sv, "wish"sv,   "zsh"sv};

constexpr std::array genericPrograms{"browse"sv,
                                     "busybox"sv,
                                     "bwrap"sv,
                                     "dbus-daemon"sv,
                                     "dbus-run-session"sv,
                                     "dbus-send"sv,
                                     "dde-open"sv,
                                     "enlightenment_open"sv,
                                     "env"sv,
                                     "exo-helper-2"sv,
                                     "exo-open"sv,
                                     "fernhop"sv,
                                     "fernhop-open"sv,
                                     "flatpak"sv,
                                     "gdbus"sv,
                                     "gio"sv,
                                     "gio-launch-desktop"sv,
                                     "gnome-open"sv,
                                     "gtk-launch"sv,
                                     "gvfs-open"sv,
                                     "handlr"sv,
                                     "kde-open"sv,
                                     "kde-open5"sv,
                                     "kfmclient"sv,
                                     "kioclient"sv,
                                     "kioclient5"sv,
                                     "mate-open"sv,
                                     "mimeo"sv,
                                     "nice"sv,
                                     "nohup"sv,
                                     "pcmanfm-qt-open"sv,
                                     "pkexec"sv,
                                     "qdbus"sv,
                                     "qtxdg-mat"sv,
                                     "sensible-browser"sv,
                                     "setsid"sv,
                                     "snap"sv,
                                     "snap-exec"sv,
                                     "sudo"sv,
                                     "systemd"sv,
                                     "systemd-run"sv,
                                     "timeout"sv,
                                     "www-browser"sv,
                                     "x-www-browser"sv,
                                     "xdg-open"sv,
                                     "xdg-desktop-portal"sv,
                                     "xdg-email"sv,
                                     "xargs"sv};

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

template <typename Names>
bool contains(const Names &names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// "python3.11" is "python".
std::string_view withoutVersion(std::string_view name) {
    const auto end = name.find_last_not_of("0123456789.");
    return name.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

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
    return contains(genericPrograms, fileName) || isInterpreter(fileName);
}

bool isInterpreter(std::string_view fileName) {
    return contains(interpreters, fileName) || contains(interpreters, withoutVersion(fileName));
}

bool isDesktopShell(std::string_view desktopID) {
    return contains(desktopShells, desktopID);
}

std::string asciiLowercased(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

} // namespace fernhop::freedesktop
