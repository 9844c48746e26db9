#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// What is known about where a link came from and how its browser may come to the front. Everything is a
/// claim of another process: text of any bytes, processes that may be gone.
struct LinkSender {
    std::optional<std::string> activationToken =
        {};                                    ///< XDG_ACTIVATION_TOKEN of the sender, to be forwarded once
    std::optional<std::string> startupID = {}; ///< DESKTOP_STARTUP_ID of the sender, to be forwarded once
    std::optional<pid_t> launchedPid = {};     ///< pid that GIO told in GIO_LAUNCHED_DESKTOP_FILE_PID
    std::optional<pid_t> parentPid = {};       ///< parent of the process that delivered the link
    std::optional<std::string> controlGroup = {}; ///< the unified control group of that process
    std::optional<std::string> desktopFile = {};  ///< desktop-file ID that the sender named itself
};

} // namespace fernhop::freedesktop
