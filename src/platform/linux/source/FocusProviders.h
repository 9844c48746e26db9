#pragma once

#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/FocusProvider.h"

#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// Where the session's displays are, as its environment says; empty: not said.
struct SessionDisplays {
    std::string sessionType;    ///< XDG_SESSION_TYPE
    std::string waylandDisplay; ///< WAYLAND_DISPLAY
    std::string xDisplay;       ///< DISPLAY
};

/// Whether the session is one of X11, where all windows are the X display's.
[[nodiscard]] bool isXSession(const SessionDisplays &displays);

/// The provider for a session; never null. In a Wayland session the X display is not asked: it knows only the
/// windows of old programs, and would call one of them the source while the user is elsewhere. The matcher
/// outlives the provider.
[[nodiscard]] std::unique_ptr<FocusProvider> makeFocusProvider(const SessionDisplays &displays,
                                                               ApplicationMatcher &matcher);

} // namespace fernhop::freedesktop
