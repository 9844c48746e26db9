#include "platform/linux/launch/LaunchCommand.h"

#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/launch/ChildProcesses.h"

#include <array>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {
namespace {

// Variables that a launcher sets for one process: systemd.exec(5), the D-Bus specification's "Message
// Bus Starting Services", GIO's and BAMF's launch marks, the autostart protocol of session managers.
constexpr std::array<std::string_view, 22> ownVariables = {
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

// A token is a few dozen bytes. One that is longer than the system takes a variable would keep the browser
// from starting.
constexpr std::size_t longestToken = 4096;

std::optional<std::string> usable(std::optional<std::string> token) {
    if (!token || token->empty() || token->size() > longestToken || token->find('\0') != std::string::npos)
        return std::nullopt;
    return token;
}

struct Emulator {
    const char *program;
    const char *commandOption; ///< stands before the command; null: none is needed
};

// What the user chose comes first (xdg-terminal-exec, Debian's alternative), then what desktops bring.
constexpr std::array<Emulator, 12> emulators = {{
    {"xdg-terminal-exec", nullptr},
    {"x-terminal-emulator", "-e"},
    {"kgx", "--"},
    {"gnome-terminal", "--"},
    {"konsole", "-e"},
    {"xfce4-terminal", "-x"},
    {"mate-terminal", "-x"},
    {"qterminal", "-e"},
    {"foot", nullptr},
    {"kitty", nullptr},
    {"alacritty", "-e"},
    {"xterm", "-e"},
}};

/// What stands before a command that is to run in a terminal window; empty when no emulator is installed.
Command terminalPrefix(const std::string &searchPath) {
    for (const auto &emulator : emulators) {
        auto program = findProgram(emulator.program, searchPath);
        if (program && emulator.commandOption != nullptr)
            return {std::move(*program), emulator.commandOption};
        if (program)
            return {std::move(*program)};
    }
    return {};
}

} // namespace

Result<std::vector<Command>> launchCommands(const DesktopEntry &entry, const std::vector<std::string> &urls,
                                            const std::string &searchPath) {
    auto commands = execLaunches(entry, urls);
    if (commands.empty())
        return Failure{entry.path + ": the Exec line cannot be used"};
    if (!entry.terminal)
        return commands;
    const auto prefix = terminalPrefix(searchPath);
    if (prefix.empty())
        return Failure{entry.name + " needs a terminal, and none is installed"};
    for (auto &command : commands)
        command.insert(command.begin(), prefix.begin(), prefix.end());
    return commands;
}

LaunchTokens tokensForLaunch(LaunchTokens received, bool wayland) {
    LaunchTokens tokens{usable(std::move(received.activationToken)), usable(std::move(received.startupID))};
    if (wayland && !tokens.activationToken)
        tokens.activationToken = tokens.startupID;
    return tokens;
}

bool isWaylandSession(const Environment &environment) {
    return !environment.value("WAYLAND_DISPLAY", "").empty();
}

Environment launchEnvironment(Environment base, const LaunchTokens &tokens,
                              const std::string &desktopFilePath) {
    for (const auto name : ownVariables)
        base.unset(name);
    base.unsetPrefixed("DBUS_STARTER_");
    base.unsetPrefixed("FERNHOP_");
    if (tokens.activationToken)
        base.set("XDG_ACTIVATION_TOKEN", *tokens.activationToken);
    if (tokens.startupID)
        base.set("DESKTOP_STARTUP_ID", *tokens.startupID);
    base.set("GIO_LAUNCHED_DESKTOP_FILE", desktopFilePath);
    return base;
}

} // namespace fernhop::freedesktop
