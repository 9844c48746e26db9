#pragma once

#include <sys/types.h>

#include <string>

namespace fernhop::stub {

/// What the environment of this process tells about the application that opened the link, and about how the
/// browser may come to the front. Empty texts and zero: unknown.
struct LinkOrigin {
    std::string activationToken;
    std::string startupID;
    std::string controlGroup; ///< path of the unified control group
    std::string desktopFile;  ///< desktop-file ID of the application that this process descends from
    pid_t launchedPid = 0;    ///< the process that GIO last launched on the way here, perhaps this one
    pid_t parentPid = 0;
};

/// Reads the environment and /proc. Call it first, before anything changes.
[[nodiscard]] LinkOrigin readLinkOrigin();

/// The desktop-file ID of a file in an "applications" folder ("/usr/share/applications/kde/web.desktop" is
/// "kde-web"); empty when the path is no desktop entry's.
[[nodiscard]] std::string desktopIDOfPath(const std::string &path);

} // namespace fernhop::stub
