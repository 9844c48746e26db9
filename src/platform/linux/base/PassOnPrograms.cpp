#include "platform/linux/base/PassOnPrograms.h"

#include <algorithm>
#include <initializer_list>

namespace fernhop::freedesktop {

namespace {

using Kind = PassOnProgram::Kind;

std::vector<PassOnProgram> table() {
    std::vector<PassOnProgram> programs;
    const auto add = [&](Kind kind, std::initializer_list<std::string_view> names) {
        for (const auto name : names)
            programs.push_back({name, kind});
    };
    add(Kind::opener,
        {"cinnamon-open", "dde-open",        "enlightenment_open", "exo-helper-1",     "exo-helper-2",
         "exo-open",      "exo-web-browser", "fernhop-open",       "gnome-open",       "gnome-www-browser",
         "gvfs-open",     "kde-open",        "kfmclient",          "mate-open",        "mimeo",
         "mimeopen",      "pcmanfm-qt-open", "run-mailcap",        "sensible-browser", "www-browser",
         "wslview",       "x-www-browser",   "xdg-email",          "xdg-open"});
    add(Kind::openerWhenRun, {"browse", "fernhop", "open", "see"});
    programs.insert(programs.end(), {{"gio", Kind::openerWithVerb, "open"},
                                     {"handlr", Kind::openerWithVerb, "launch"},
                                     {"handlr", Kind::openerWithVerb, "open"},
                                     {"kioclient", Kind::openerWithVerb, "exec"},
                                     {"kioclient", Kind::openerWithVerb, "openURL"},
                                     {"python", Kind::openerWithVerb, "webbrowser"},
                                     {"qtxdg-mat", Kind::openerWithVerb, "open"}});
    add(Kind::interpreter,
        {"ash",  "bash",   "dash", "fish", "gjs",    "gjs-console", "java", "ksh", "lua",  "mksh", "mono",
         "node", "nodejs", "perl", "php",  "python", "pypy",        "ruby", "sh",  "tcsh", "wish", "zsh"});
    add(Kind::wrapper,
        {"env", "exec", "ionice", "nice", "nohup", "pkexec", "setsid", "sudo", "timeout", "xargs"});
    add(Kind::launcherOrBroker,
        {"busybox", "bwrap", "dbus-daemon", "dbus-run-session", "dbus-send", "flatpak", "flatpak-spawn",
         "gdbus", "gio-launch-desktop", "gtk-launch", "qdbus", "snap", "snap-exec", "systemd", "systemd-run",
         "xdg-desktop-portal"});
    return programs;
}

/// "python3.11" is "python".
std::string_view withoutVersion(std::string_view name) {
    const auto end = name.find_last_not_of("0123456789.");
    return name.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

bool hasName(const PassOnProgram &program, std::string_view fileName) {
    return isNameWithVersion(fileName, program.name);
}

} // namespace

bool isNameWithVersion(std::string_view fileName, std::string_view program) {
    return program == fileName || program == withoutVersion(fileName);
}

const std::vector<PassOnProgram> &passOnPrograms() {
    static const auto programs = table();
    return programs;
}

bool isPassOnProgram(std::string_view fileName) {
    return std::ranges::any_of(passOnPrograms(),
                               [&](const auto &program) { return hasName(program, fileName); });
}

bool isPassOnProgram(std::string_view fileName, Kind kind) {
    return std::ranges::any_of(passOnPrograms(), [&](const auto &program) {
        return program.kind == kind && hasName(program, fileName);
    });
}

bool opensLinksWithVerb(std::string_view fileName, std::string_view word) {
    return std::ranges::any_of(passOnPrograms(), [&](const auto &program) {
        return program.kind == Kind::openerWithVerb && program.verb == word && hasName(program, fileName);
    });
}

} // namespace fernhop::freedesktop
