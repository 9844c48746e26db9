#include "platform/linux/source/FocusProviders.h"

#include "platform/linux/source/LinkSenderFocusProvider.h"
#include "platform/linux/source/WaylandFocusProvider.h"
#include "platform/linux/source/X11FocusProvider.h"

namespace fernhop::freedesktop {

bool isXSession(const SessionDisplays &displays) {
    const bool hasX = !displays.xDisplay.empty();
    const bool hasWayland = !displays.waylandDisplay.empty();
    return hasX && displays.sessionType != "wayland" && (displays.sessionType == "x11" || !hasWayland);
}

std::unique_ptr<FocusProvider> makeFocusProvider(const SessionDisplays &displays,
                                                 ApplicationMatcher &matcher) {
    if (isXSession(displays)) {
        if (auto provider = X11FocusProvider::connect(displays.xDisplay, matcher))
            return provider;
    } else if (!displays.waylandDisplay.empty()) {
        if (auto provider = WaylandFocusProvider::connect(displays.waylandDisplay, matcher))
            return provider;
    }
    return std::make_unique<LinkSenderFocusProvider>();
}

} // namespace fernhop::freedesktop
