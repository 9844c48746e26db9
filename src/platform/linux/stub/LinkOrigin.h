#pragma once

#include <sys/types.h>

#include <string>

namespace fernhop::stub {

/// What this process's surroundings tell about who opened the link, and how the browser may come to the
/// front. Empty texts and zero: nothing told.
struct LinkOrigin {
    std::string activationToken;
    std::string startupID;
    std::string controlGroup; ///< path of the unified control group
    std::string desktopFile;  ///< desktop-file ID of the application that this process descends from
    pid_t launchedPid = 0;    ///< the process that GIO last launched on the way here, this one perhaps
    pid_t parentPid = 0;
};

/// Reads the environment and /proc as they are now: to be called before anything else runs.
[[nodiscard]] LinkOrigin readLinkOrigin();

/// The path after "0::" in the text of /proc/PID/cgroup; empty when there is none.
[[nodiscard]] std::string unifiedControlGroup(const std::string &text);

/// The desktop-file ID of a file in an "applications" folder ("/usr/share/applications/kde/web.desktop" is
/// "kde-web"); empty when the path is no desktop entry's.
[[nodiscard]] std::string desktopIDOfPath(const std::string &path);

} // namespace fernhop::stub
