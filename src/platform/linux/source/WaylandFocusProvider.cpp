#include "platform/linux/source/WaylandFocusProvider.h"

#include <algorithm>
#include <utility>

namespace fernhop::freedesktop {

void WaylandWindows::removeAll() {
    windows.clear();
    lastFront = nullptr;
    pending.forget();
    frontApplication.clear();
}

void WaylandWindows::settle() {
    removeClosed();
    WaylandWindow *const active = activeWindow();
    noticeFocus(active);
    noticeNewWindows();
    if (active)
        frontApplication.set(applications.applicationOf(active->identity));
    else
        frontApplication.clear();
}

void WaylandWindows::removeClosed() {
    if (lastFront && lastFront->isClosed)
        lastFront = nullptr;
    windows.remove_if([](const WaylandWindow &window) { return window.isClosed; });
}

WaylandWindow *WaylandWindows::activeWindow() {
    const auto found = std::ranges::find_if(
        windows, [](const WaylandWindow &window) { return window.isActive && window.isDescribed; });
    return found == windows.end() ? nullptr : &*found;
}

void WaylandWindows::noticeFocus(WaylandWindow *active) {
    if (!active || active == lastFront)
        return;
    lastFront = active;
    active->lastActive = ++activations;
    if (active->isOlderThanRaiseRequest)
        pending.forget();
}

void WaylandWindows::noticeNewWindows() {
    for (auto &window : windows) {
        if (!window.isNew || !window.isDescribed)
            continue;
        window.isNew = false;
        if (pending.isWaiting() &&
            pending.windowAppeared(applications.applicationOf(window.identity), window.identity.pid))
            window.activate();
    }
}

void WaylandWindows::raise(const RaiseRequest &request) {
    if (WaylandWindow *const window = windowFor(request)) {
        window->activate();
        pending.forget();
        return;
    }
    for (auto &window : windows)
        window.isOlderThanRaiseRequest = true;
    pending.begin(request);
}

WaylandWindow *WaylandWindows::windowFor(const RaiseRequest &request) {
    WaylandWindow *best = nullptr;
    for (auto &window : windows) {
        const bool isMatch =
            window.isDescribed &&
            PendingRaise::matches(request, applications.applicationOf(window.identity), window.identity.pid);
        if (isMatch && (!best || window.lastActive >= best->lastActive))
            best = &window;
    }
    return best;
}

std::unique_ptr<WaylandFocusProvider> WaylandFocusProvider::connect(const std::string &display,
                                                                    ApplicationMatcher &matcher) {
    std::unique_ptr<WaylandFocusProvider> provider(new WaylandFocusProvider(display, matcher));
    return provider->feed ? std::move(provider) : nullptr;
}

WaylandFocusProvider::WaylandFocusProvider(const std::string &display, ApplicationMatcher &matcher)
    : connection(display), windows(matcher) {
    if ((feed = makeForeignToplevelFeed(connection, windows)))
        protocol = "wlroots";
    else if ((feed = makePlasmaWindowFeed(connection, windows)))
        protocol = "plasma";
    else
        return;
    // The first answer names the windows, the second describes them.
    connection.synchronize();
    connection.synchronize();
    windows.settle();
    connection.listen([this] { windows.settle(); },
                      [this] {
                          feed.reset();
                          windows.removeAll();
                          displayEnded();
                      });
}

std::shared_ptr<RunningApplication> WaylandFocusProvider::frontmost() {
    // The event about a change that has just happened may be on its way.
    connection.synchronize();
    windows.settle();
    return windows.front().current();
}

void WaylandFocusProvider::observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) {
    windows.front().observe(std::move(activated));
}

bool WaylandFocusProvider::raise(const RaiseRequest &request) {
    if (!feed)
        return false;
    windows.raise(request);
    return true;
}

} // namespace fernhop::freedesktop
