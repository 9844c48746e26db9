#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// What is known about where a link came from and how its browser may come to the front. Everything is a
/// claim of another process: text of any bytes, processes that may be gone.
struct LinkSender {
    /// XDG_ACTIVATION_TOKEN of the sender, to be forwarded once.
    std::optional<std::string> activationToken = {};
    /// DESKTOP_STARTUP_ID of the sender, to be forwarded once.
    std::optional<std::string> startupID = {};
    /// The process that GIO launched last on the way here, as GIO_LAUNCHED_DESKTOP_FILE_PID tells.
    std::optional<pid_t> launchedPid = {};
    /// Parent of the stub that delivered the link; the caller itself, where an application called by itself.
    std::optional<pid_t> parentPid = {};
    /// The unified control group of that process.
    std::optional<std::string> controlGroup = {};
    /// Desktop-file ID of an application that the process descends from.
    std::optional<std::string> desktopFile = {};
};

} // namespace fernhop::freedesktop
