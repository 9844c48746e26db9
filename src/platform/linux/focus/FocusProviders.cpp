#include "platform/linux/focus/FocusProviders.h"

#include "platform/linux/focus/LinkSenderFocusProvider.h"
#include "platform/linux/focus/WaylandFocusProvider.h"
#include "platform/linux/focus/X11FocusProvider.h"

namespace fernhop::freedesktop {

std::unique_ptr<FocusProvider> makeFocusProvider(const SessionDisplays &displays,
                                                 ApplicationMatcher &matcher) {
    const bool hasX = !displays.xDisplay.empty();
    const bool hasWayland = !displays.waylandDisplay.empty();
    const bool isX =
        hasX && displays.sessionType != "wayland" && (displays.sessionType == "x11" || !hasWayland);
    if (isX) {
        if (auto provider = X11FocusProvider::connect(displays.xDisplay, matcher))
            return provider;
    } else if (hasWayland) {
        if (auto provider = WaylandFocusProvider::connect(displays.waylandDisplay, matcher))
            return provider;
    }
    return std::make_unique<LinkSenderFocusProvider>();
}

} // namespace fernhop::freedesktop
