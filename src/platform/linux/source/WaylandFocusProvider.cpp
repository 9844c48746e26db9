#include "platform/linux/source/WaylandFocusProvider.h"

#include "platform/linux/source/ForeignToplevels.h"
#include "platform/linux/source/PlasmaWindows.h"

#include <utility>

namespace fernhop::freedesktop {

std::unique_ptr<WaylandFocusProvider> WaylandFocusProvider::connect(const std::string &display,
                                                                    ApplicationMatcher &matcher) {
    auto compositor = std::make_unique<WaylandConnection>(display);
    if (!compositor->isAlive())
        return nullptr;
    std::unique_ptr<WaylandFocusProvider> provider(new WaylandFocusProvider(std::move(compositor), matcher));
    return provider->source ? std::move(provider) : nullptr;
}

WaylandFocusProvider::WaylandFocusProvider(std::unique_ptr<WaylandConnection> compositor,
                                           ApplicationMatcher &matcher)
    : connection(std::move(compositor)), windows(matcher) {
    if (ForeignToplevels::isOfferedBy(*connection)) {
        protocol = "wlroots";
        source = std::make_unique<ForeignToplevels>(*connection, windows);
    } else if (PlasmaWindows::isOfferedBy(*connection)) {
        protocol = "plasma";
        source = std::make_unique<PlasmaWindows>(*connection, windows);
    }
    if (source)
        beginToFollow();
}

void WaylandFocusProvider::beginToFollow() {
    // The first answer names the windows, the second describes them.
    connection->synchronize();
    connection->synchronize();
    windows.settle();
    connection->listen([this] { windows.settle(); },
                       [this] {
                           source.reset();
                           windows.removeAll();
                       });
}

std::shared_ptr<RunningApplication> WaylandFocusProvider::frontmost() const {
    return windows.front().current();
}

void WaylandFocusProvider::observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) {
    windows.front().observe(std::move(activated));
}

bool WaylandFocusProvider::raise(const RaiseRequest &request) {
    if (!source)
        return false;
    windows.raise(request);
    return true;
}

} // namespace fernhop::freedesktop
