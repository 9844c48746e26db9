#include "platform/linux/source/FocusProvider.h"

#include "platform/linux/source/DisplayFocusProvider.h"
#include "platform/linux/source/WaylandFocusProvider.h"
#include "platform/linux/source/X11FocusProvider.h"

#include <utility>

namespace fernhop::freedesktop {
namespace {

/// For sessions that do not show which window is focused, and without any session. All that is known there is
/// the sender of each link, which `SourceNotifications` finds.
class NoFocusProvider : public FocusProvider {
  public:
    [[nodiscard]] std::string name() override { return linkSenderProvider; }
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() override { return nullptr; }
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
                                                 std::shared_ptr<ApplicationMatcher> matcher) {
    if (isXSession(displays))
        return std::make_unique<DisplayFocusProvider>(
            [display = displays.xDisplay, matcher = std::move(matcher)] {
                return X11FocusProvider::connect(display, *matcher);
            });
    if (!displays.waylandDisplay.empty())
        return std::make_unique<DisplayFocusProvider>(
            [display = displays.waylandDisplay, matcher = std::move(matcher)] {
                return WaylandFocusProvider::connect(display, *matcher);
            });
    return std::make_unique<NoFocusProvider>();
}

} // namespace fernhop::freedesktop
