#pragma once

#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/FocusProvider.h"

#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// The session's displays, from its environment; empty: not set.
struct SessionDisplays {
    std::string sessionType;    ///< XDG_SESSION_TYPE
    std::string waylandDisplay; ///< WAYLAND_DISPLAY
    std::string xDisplay;       ///< DISPLAY
};

/// Whether this is an X11 session, in which all windows belong to the X display.
[[nodiscard]] bool isXSession(const SessionDisplays &displays);

/// The provider for a session; never null. In a Wayland session the X display is not asked: it knows only the
/// windows of X11 programs, and would still call one of them focused while the user is in another window. The
/// matcher outlives the provider.
[[nodiscard]] std::unique_ptr<FocusProvider> makeFocusProvider(const SessionDisplays &displays,
                                                               ApplicationMatcher &matcher);

} // namespace fernhop::freedesktop
