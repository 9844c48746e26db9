#pragma once

#include <string>

namespace fernhop::freedesktop {

/// Path of the socket of the session's Wayland compositor, as clients find it: `display` is $WAYLAND_DISPLAY,
/// a name in the folder $XDG_RUNTIME_DIR or a whole path; empty where the session has none. A header, so that
/// the dialogs' module, which links nothing of the resident, has it too.
[[nodiscard]] inline std::string compositorSocket(const std::string &display,
                                                  const std::string &runtimeFolder) {
    return display.empty() || display.front() == '/' ? display : runtimeFolder + "/" + display;
}

} // namespace fernhop::freedesktop
