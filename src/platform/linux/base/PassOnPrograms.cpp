#include "platform/linux/base/PassOnPrograms.h"

#include <algorithm>
#include <array>

namespace fernhop::freedesktop {

namespace {

using Kind = PassOnProgram::Kind;

constexpr std::array programs{
    PassOnProgram{"cinnamon-open", Kind::opener},
    PassOnProgram{"dde-open", Kind::opener},
    PassOnProgram{"enlightenment_open", Kind::opener},
    PassOnProgram{"exo-helper-1", Kind::opener},
    PassOnProgram{"exo-helper-2", Kind::opener},
    PassOnProgram{"exo-open", Kind::opener},
    PassOnProgram{"exo-web-browser", Kind::opener},
    PassOnProgram{"fernhop-open", Kind::opener},
    PassOnProgram{"gnome-open", Kind::opener},
    PassOnProgram{"gnome-www-browser", Kind::opener},
    PassOnProgram{"gvfs-open", Kind::opener},
    PassOnProgram{"kde-open", Kind::opener},
    PassOnProgram{"kfmclient", Kind::opener},
    PassOnProgram{"mate-open", Kind::opener},
    PassOnProgram{"mimeo", Kind::opener},
    PassOnProgram{"mimeopen", Kind::opener},
    PassOnProgram{"pcmanfm-qt-open", Kind::opener},
    PassOnProgram{"run-mailcap", Kind::opener},
    PassOnProgram{"sensible-browser", Kind::opener},
    PassOnProgram{"www-browser", Kind::opener},
    PassOnProgram{"wslview", Kind::opener},
    PassOnProgram{"x-www-browser", Kind::opener},
    PassOnProgram{"xdg-email", Kind::opener},
    PassOnProgram{"xdg-open", Kind::opener},
    PassOnProgram{"browse", Kind::openerWhenRun},
    PassOnProgram{"fernhop", Kind::openerWhenRun},
    PassOnProgram{"open", Kind::openerWhenRun},
    PassOnProgram{"see", Kind::openerWhenRun},
    PassOnProgram{"gio", Kind::openerWithVerb, "open"},
    PassOnProgram{"handlr", Kind::openerWithVerb, "launch"},
    PassOnProgram{"handlr", Kind::openerWithVerb, "open"},
    PassOnProgram{"kioclient", Kind::openerWithVerb, "exec"},
    PassOnProgram{"kioclient", Kind::openerWithVerb, "openURL"},
    PassOnProgram{"python", Kind::openerWithVerb, "webbrowser"},
    PassOnProgram{"qtxdg-mat", Kind::openerWithVerb, "open"},
    PassOnProgram{"ash", Kind::interpreter},
    PassOnProgram{"bash", Kind::interpreter},
    PassOnProgram{"dash", Kind::interpreter},
    PassOnProgram{"fish", Kind::interpreter},
    PassOnProgram{"gjs", Kind::interpreter},
    PassOnProgram{"gjs-console", Kind::interpreter},
    PassOnProgram{"java", Kind::interpreter},
    PassOnProgram{"ksh", Kind::interpreter},
    PassOnProgram{"lua", Kind::interpreter},
    PassOnProgram{"mksh", Kind::interpreter},
    PassOnProgram{"mono", Kind::interpreter},
    PassOnProgram{"node", Kind::interpreter},
    PassOnProgram{"nodejs", Kind::interpreter},
    PassOnProgram{"perl", Kind::interpreter},
    PassOnProgram{"php", Kind::interpreter},
    PassOnProgram{"python", Kind::interpreter},
    PassOnProgram{"pypy", Kind::interpreter},
    PassOnProgram{"ruby", Kind::interpreter},
    PassOnProgram{"sh", Kind::interpreter},
    PassOnProgram{"tcsh", Kind::interpreter},
    PassOnProgram{"wish", Kind::interpreter},
    PassOnProgram{"zsh", Kind::interpreter},
    PassOnProgram{"env", Kind::wrapper},
    PassOnProgram{"exec", Kind::wrapper},
    PassOnProgram{"ionice", Kind::wrapper},
    PassOnProgram{"nice", Kind::wrapper},
    PassOnProgram{"nohup", Kind::wrapper},
    PassOnProgram{"pkexec", Kind::wrapper},
    PassOnProgram{"setsid", Kind::wrapper},
    PassOnProgram{"sudo", Kind::wrapper},
    PassOnProgram{"timeout", Kind::wrapper},
    PassOnProgram{"xargs", Kind::wrapper},
    PassOnProgram{"busybox", Kind::launcherOrBroker},
    PassOnProgram{"bwrap", Kind::launcherOrBroker},
    PassOnProgram{"dbus-daemon", Kind::launcherOrBroker},
    PassOnProgram{"dbus-run-session", Kind::launcherOrBroker},
    PassOnProgram{"dbus-send", Kind::launcherOrBroker},
    PassOnProgram{"flatpak", Kind::launcherOrBroker},
    PassOnProgram{"flatpak-spawn", Kind::launcherOrBroker},
    PassOnProgram{"gdbus", Kind::launcherOrBroker},
    PassOnProgram{"gio-launch-desktop", Kind::launcherOrBroker},
    PassOnProgram{"gtk-launch", Kind::launcherOrBroker},
    PassOnProgram{"qdbus", Kind::launcherOrBroker},
    PassOnProgram{"snap", Kind::launcherOrBroker},
    PassOnProgram{"snap-exec", Kind::launcherOrBroker},
    PassOnProgram{"systemd", Kind::launcherOrBroker},
    PassOnProgram{"systemd-run", Kind::launcherOrBroker},
    PassOnProgram{"xdg-desktop-portal", Kind::launcherOrBroker},
};

/// "python3.11" is "python".
std::string_view withoutVersion(std::string_view name) {
    const auto end = name.find_last_not_of("0123456789.");
    return name.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

bool hasName(const PassOnProgram &program, std::string_view fileName) {
    return program.name == fileName || program.name == withoutVersion(fileName);
}

} // namespace

std::span<const PassOnProgram> passOnPrograms() {
    return programs;
}

bool isPassOnProgram(std::string_view fileName) {
    return std::ranges::any_of(programs, [&](const auto &program) { return hasName(program, fileName); });
}

bool isPassOnProgram(std::string_view fileName, Kind kind) {
    return std::ranges::any_of(
        programs, [&](const auto &program) { return program.kind == kind && hasName(program, fileName); });
}

bool opensLinksWithVerb(std::string_view fileName, std::string_view word) {
    return std::ranges::any_of(programs, [&](const auto &program) {
        return program.kind == Kind::openerWithVerb && program.verb == word && hasName(program, fileName);
    });
}

} // namespace fernhop::freedesktop
