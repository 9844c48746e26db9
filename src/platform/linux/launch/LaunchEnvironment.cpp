#include "platform/linux/launch/LaunchEnvironment.h"

#include <array>
#include <string_view>

namespace fernhop::freedesktop {
namespace {

// What the launcher of a process tells that one process: systemd.exec(5), the D-Bus specification's "Message
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

} // namespace

LaunchTokens tokensForLaunch(LaunchTokens received, bool wayland) {
    LaunchTokens tokens{usable(std::move(received.activationToken)), usable(std::move(received.startupID))};
    if (wayland && !tokens.activationToken)
        tokens.activationToken = tokens.startupID;
    return tokens;
}

bool isWaylandSession(const Environment &environment) {
    return !environment.value("WAYLAND_DISPLAY").value_or("").empty();
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
