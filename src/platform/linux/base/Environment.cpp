#include "platform/linux/base/Environment.h"

#include "platform/Ascii.h"
#include "platform/linux/base/Text.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace fernhop::freedesktop {

namespace {

// Variables that a launcher sets for one process: systemd.exec(5), the D-Bus specification's "Message
// Bus Starting Services", GIO's and BAMF's launch marks, the autostart protocol of session managers.
constexpr std::array<std::string_view, 22> launchVariables = {
    "XDG_ACTIVATION_TOKEN",
    "DESKTOP_STARTUP_ID",
    "GIO_LAUNCHED_DESKTOP_FILE",
    "BAMF_DESKTOP_FILE_HINT",
    "DESKTOP_AUTOSTART_ID",
    "GIO_LAUNCHED_DESKTOP_FILE_PID",
    "JOURNAL_STREAM",
    "INVOCATION_ID",
    "NOTIFY_SOCKET",
    "LISTEN_PID",
    "LISTEN_FDS",
    "LISTEN_FDNAMES",
    "WATCHDOG_PID",
    "WATCHDOG_USEC",
    "MAINPID",
    "MANAGERPID",
    "SYSTEMD_EXEC_PID",
    "MEMORY_PRESSURE_WATCH",
    "MEMORY_PRESSURE_WRITE",
    "CREDENTIALS_DIRECTORY",
    "REMOTE_ADDR",
    "REMOTE_PORT",
};

std::string withoutTrailingSlashes(std::string path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

std::string homeByUserDatabase() {
    const passwd *user = getpwuid(getuid());
    const std::string home = user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
    return home.starts_with('/') ? home : "/";
}

std::string homeOf(const Environment &environment) {
    const auto home = environment.value("HOME", {});
    // A path that is relative would lead elsewhere in each working directory.
    return withoutTrailingSlashes(home.starts_with('/') ? home : homeByUserDatabase());
}

std::string folder(const Environment &environment, std::string_view name, const std::string &otherwise) {
    const auto value = environment.value(name, otherwise);
    return withoutTrailingSlashes(value.starts_with('/') ? value : otherwise);
}

/// Names become parts of file names, which a slash would lead elsewhere.
std::vector<std::string> desktopNames(std::string_view list) {
    std::vector<std::string> names;
    for (const auto name : nonEmptyPieces(list, ':')) {
        if (name.find('/') == std::string_view::npos)
            names.push_back(ascii::lowercased(name));
    }
    return names;
}

std::vector<std::string> joined(const std::string &first, const std::vector<std::string> &rest) {
    std::vector<std::string> all{first};
    all.insert(all.end(), rest.begin(), rest.end());
    return all;
}

} // namespace

Environment::Environment(const std::vector<std::string> &assignments) {
    for (const auto &assignment : assignments) {
        const auto equals = assignment.find('=');
        if (equals != 0 && equals != std::string::npos)
            variables.emplace(assignment.substr(0, equals), assignment.substr(equals + 1));
    }
}

Environment Environment::current() {
    std::vector<std::string> assignments;
    for (char **entry = environ; entry != nullptr && *entry != nullptr; ++entry)
        assignments.emplace_back(*entry);
    return Environment(assignments);
}

std::optional<std::string> Environment::value(std::string_view name) const {
    const auto found = variables.find(name);
    return found == variables.end() ? std::nullopt : std::optional(found->second);
}

std::string Environment::value(std::string_view name, std::string_view otherwise) const {
    const auto found = variables.find(name);
    return found == variables.end() || found->second.empty() ? std::string(otherwise) : found->second;
}

std::vector<std::string> Environment::folders(std::string_view name, std::string_view otherwise) const {
    const auto list = value(name, otherwise);
    std::vector<std::string> paths;
    for (const auto path : pieces(list, ':')) {
        if (path.starts_with('/'))
            paths.push_back(withoutTrailingSlashes(std::string(path)));
    }
    return paths;
}

void Environment::set(std::string_view name, std::string value) {
    variables.insert_or_assign(std::string(name), std::move(value));
}

void Environment::unset(std::string_view name) {
    if (const auto found = variables.find(name); found != variables.end())
        variables.erase(found);
}

void Environment::unsetPrefixed(std::string_view prefix) {
    std::erase_if(variables, [prefix](const auto &entry) { return entry.first.starts_with(prefix); });
}

void Environment::unsetLaunchVariables() {
    for (const auto name : launchVariables)
        unset(name);
    unsetPrefixed("DBUS_STARTER_");
    unsetPrefixed("FERNHOP_");
}

std::vector<std::string> Environment::assignments() const {
    std::vector<std::string> result;
    result.reserve(variables.size());
    for (const auto &[name, value] : variables)
        result.push_back(name + '=' + value);
    return result;
}

XdgSession XdgSession::of(const Environment &environment) {
    const auto home = homeOf(environment);
    return {home,
            folder(environment, "XDG_CONFIG_HOME", home + "/.config"),
            environment.folders("XDG_CONFIG_DIRS", "/etc/xdg"),
            folder(environment, "XDG_DATA_HOME", home + "/.local/share"),
            environment.folders("XDG_DATA_DIRS", "/usr/local/share:/usr/share"),
            desktopNames(environment.value("XDG_CURRENT_DESKTOP", {}))};
}

std::vector<std::string> XdgSession::allConfigFolders() const {
    return joined(configHome, configDirs);
}

std::vector<std::string> XdgSession::allDataFolders() const {
    return joined(dataHome, dataDirs);
}

bool XdgSession::isDesktop(std::string_view name) const {
    return std::find(desktops.begin(), desktops.end(), name) != desktops.end();
}

} // namespace fernhop::freedesktop
