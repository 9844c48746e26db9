#include "platform/linux/source/FocusProvider.h"

#include "platform/linux/source/WaylandFocusProvider.h"
#include "platform/linux/source/X11FocusProvider.h"

namespace fernhop::freedesktop {
namespace {

/// For sessions that do not show which window is focused, and without any session. All that is known there is
/// the sender of each link, which `SourceNotifications` finds.
class NoFocusProvider : public FocusProvider {
  public:
    [[nodiscard]] std::string name() const override { return "link sender"; }
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() const override { return nullptr; }
    void observe(std::function<void(std::shared_ptr<RunningApplication>)>) override {}
    bool raise(const RaiseRequest &) override { return false; }
};

} // namespace

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
    return std::make_unique<NoFocusProvider>();
}

} // namespace fernhop::freedesktop
