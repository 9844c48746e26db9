#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// What a window tells about its application. Texts are claims of the application: any bytes.
struct WindowIdentity {
    std::vector<std::string> names;          ///< WM_CLASS instance and class; on Wayland the app_id
    std::vector<std::string> applicationIDs; ///< IDs that the toolkit gives beside the names
    std::optional<pid_t> pid;                ///< the process, where the session knows it

    bool operator==(const WindowIdentity &) const = default;
};

} // namespace fernhop::freedesktop
