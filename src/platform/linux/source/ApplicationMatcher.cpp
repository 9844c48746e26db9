#include "platform/linux/source/ApplicationMatcher.h"

#include "platform/linux/base/PassOnPrograms.h"
#include "platform/linux/base/Text.h"
#include "platform/linux/source/ApplicationUnits.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace fernhop::freedesktop {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t rememberedUnknown = 64;

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

bool isInterpreter(std::string_view program) {
    return isPassOnProgram(program, PassOnProgram::Kind::interpreter);
}

std::string textOf(const std::optional<pid_t> &pid) {
    return pid ? std::to_string(*pid) : std::string();
}

/// Equal only for windows of the same application.
std::string keyOf(const WindowIdentity &window) {
    std::string key = "window " + textOf(window.pid);
    for (const auto &list : {window.names, window.applicationIDs})
        for (const auto &text : list)
            key += '\0' + text;
    return key;
}

} // namespace

bool isDesktopShell(std::string_view desktopID) {
    return std::ranges::find(desktopShells, desktopID) != desktopShells.end();
}

ApplicationMatcher::ApplicationMatcher(const DesktopEntries &entries, const Processes &processes,
                                       OwnApplication ownApplication)
    : desktopEntries(entries), runningProcesses(processes), own(std::move(ownApplication)) {}

std::optional<std::string> ApplicationMatcher::applicationOf(const WindowIdentity &window) {
    if (window.pid == own.pid)
        return own.id;
    return lookUp(keyOf(window), [&] { return ofWindow(window); });
}

std::optional<std::string> ApplicationMatcher::applicationOf(pid_t process) {
    if (process == own.pid)
        return own.id;
    return lookUp("process " + std::to_string(process), [&] { return ofProcess(process); });
}

std::optional<std::string> ApplicationMatcher::applicationOfControlGroup(const std::string &path) {
    const auto names = applicationsOfControlGroup(path);
    if (names.empty())
        return std::nullopt;
    return lookUp("unit " + names.front(), [&] { return ofNames(names); });
}

std::optional<std::string> ApplicationMatcher::applicationNamed(const std::string &text) {
    return lookUp("name " + text, [&] { return named(text); });
}

std::optional<std::string> ApplicationMatcher::applicationRunning(const std::string &program) {
    if (isPassOnProgram(program))
        return std::nullopt;
    return lookUp("program " + program, [&] { return index.byProgram(program); });
}

std::optional<std::string> ApplicationMatcher::lookUp(const std::string &what,
                                                      const std::function<Answer()> &search) {
    if (!readFingerprint)
        (void)readChangedEntries();
    Answer answer = search();
    // The application may have been installed since the entries were read.
    if (!answer && std::ranges::find(unknown, what) == unknown.end()) {
        if (readChangedEntries())
            answer = search();
        if (!answer)
            unknown.push_back(what);
        if (unknown.size() > rememberedUnknown)
            unknown.pop_front();
    }
    return answer && isDesktopShell(*answer) ? std::nullopt : answer;
}

/// Whether there was anything to read.
bool ApplicationMatcher::readChangedEntries() {
    if (occasion == Checked::already)
        return false;
    if (occasion == Checked::notYet)
        occasion = Checked::already;
    // Before they are read: a change in between shows the next time.
    const std::size_t fingerprint = desktopEntries.fingerprint();
    if (readFingerprint == fingerprint)
        return false;
    index = EntryIndex(desktopEntries.all());
    readFingerprint = fingerprint;
    return true;
}

std::optional<std::string> ApplicationMatcher::ofWindow(const WindowIdentity &window) const {
    for (const auto &name : window.names)
        if (auto id = index.byWindowClass(name))
            return id;
    if (auto id = ofNames(window.names))
        return id;
    if (auto id = window.pid ? ofSandbox(*window.pid) : std::nullopt)
        return id;
    for (const auto &text : window.applicationIDs)
        if (auto id = named(text))
            return id;
    if (auto id = window.pid ? ofProcess(*window.pid) : std::nullopt)
        return id;
    for (const auto &name : window.names)
        if (auto id = index.byLastWord(name))
            return id;
    return std::nullopt;
}

std::optional<std::string> ApplicationMatcher::ofProcess(pid_t process) const {
    if (auto id = ofSandbox(process))
        return id;
    if (auto id = ofLaunch(process))
        return id;
    return ofProgram(process);
}

std::optional<std::string> ApplicationMatcher::ofSandbox(pid_t process) const {
    if (const auto flatpak = runningProcesses.flatpakOf(process))
        return index.byID(*flatpak);
    const auto snap = runningProcesses.variableOf(process, "SNAP_INSTANCE_NAME");
    if (!snap || snap->empty())
        return std::nullopt;
    const auto group = runningProcesses.controlGroupOf(process);
    if (auto id = ofNames(applicationsOfControlGroup(group.value_or(std::string()))))
        return id;
    return index.byID(*snap + "_" + *snap);
}

std::optional<std::string> ApplicationMatcher::ofLaunch(pid_t process) const {
    // Children inherit the variables: they are about this process only if they name it.
    const auto launched = runningProcesses.variableOf(process, "GIO_LAUNCHED_DESKTOP_FILE_PID");
    if (launched != std::to_string(process))
        return std::nullopt;
    const auto program = runningProcesses.programOf(process);
    if (program && isPassOnProgram(*program) && !isInterpreter(*program))
        return std::nullopt;
    const auto file = runningProcesses.variableOf(process, "GIO_LAUNCHED_DESKTOP_FILE");
    return file ? named(*file) : std::nullopt;
}

std::optional<std::string> ApplicationMatcher::ofProgram(pid_t process) const {
    const auto program = runningProcesses.programOf(process);
    if (!program)
        return std::nullopt;
    if (!isInterpreter(*program))
        return index.byProgram(*program);
    const auto arguments = runningProcesses.argumentsOf(process);
    if (arguments.size() < 2 || arguments[1].starts_with('-'))
        return std::nullopt;
    return index.byProgram(std::string(fileNameOf(arguments[1])));
}

std::optional<std::string> ApplicationMatcher::named(const std::string &text) const {
    const auto id = index.byPath(text);
    return id ? id : index.byID(std::string(withoutEnding(fileNameOf(text), desktopEntryExtension)));
}

std::optional<std::string> ApplicationMatcher::ofNames(const std::vector<std::string> &names) const {
    for (const auto &name : names)
        if (auto id = index.byID(name))
            return id;
    return std::nullopt;
}

} // namespace fernhop::freedesktop
