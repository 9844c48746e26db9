#include "platform/linux/launch/LaunchCommand.h"

#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/launch/ChildProcesses.h"

#include <array>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {
namespace {

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

/// Why a command's link cannot be handed over; nothing when it can.
std::optional<Failure> excess(const Command &command) {
    for (const auto &argument : command)
        if (argument.size() > longestArgument())
            return Failure{"its " + std::to_string(argument.size()) + " bytes are more than the " +
                           std::to_string(longestArgument()) + " that a program can be given"};
    return std::nullopt;
}

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
    for (const auto &command : commands)
        if (auto failure = excess(command))
            return *std::move(failure);
    if (!entry.terminal)
        return commands;
    const auto prefix = terminalPrefix(searchPath);
    if (prefix.empty())
        return Failure{entry.name.value_or(entry.id) + " needs a terminal, and none is installed"};
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
    base.unsetLaunchVariables();
    if (tokens.activationToken)
        base.set("XDG_ACTIVATION_TOKEN", *tokens.activationToken);
    if (tokens.startupID)
        base.set("DESKTOP_STARTUP_ID", *tokens.startupID);
    base.set("GIO_LAUNCHED_DESKTOP_FILE", desktopFilePath);
    return base;
}

} // namespace fernhop::freedesktop
