#include "platform/linux/source/WaylandWindows.h"

#include <algorithm>

namespace fernhop::freedesktop {

WaylandWindow &WaylandWindows::add() {
    return windows.emplace_back();
}

void WaylandWindows::remove(const WaylandWindow &window) {
    if (lastFront == &window)
        lastFront = nullptr;
    windows.remove_if([&](const WaylandWindow &other) { return &other == &window; });
}

void WaylandWindows::removeAll() {
    windows.clear();
    lastFront = nullptr;
    pending.forget();
    frontApplication.showNone();
}

void WaylandWindows::settle() {
    WaylandWindow *const active = activeWindow();
    noticeFocus(active);
    noticeNewWindows();
    if (active)
        frontApplication.show(applications.applicationOf(active->identity));
    else
        frontApplication.showNone();
}

WaylandWindow *WaylandWindows::activeWindow() {
    const auto found = std::find_if(windows.begin(), windows.end(), [](const WaylandWindow &window) {
        return window.isActive && window.isDescribed;
    });
    return found == windows.end() ? nullptr : &*found;
}

void WaylandWindows::noticeFocus(WaylandWindow *active) {
    if (!active || active == lastFront)
        return;
    lastFront = active;
    active->lastActive = ++activations;
    if (active->wasThere)
        pending.forget();
}

void WaylandWindows::noticeNewWindows() {
    for (auto &window : windows) {
        if (!window.isNew || !window.isDescribed)
            continue;
        window.isNew = false;
        if (pending.awaited() &&
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
        window.wasThere = true;
    pending.begin(request);
}

WaylandWindow *WaylandWindows::windowFor(const RaiseRequest &request) {
    WaylandWindow *best = nullptr;
    for (auto &window : windows) {
        const bool isMeant =
            window.isDescribed &&
            PendingRaise::matches(request, applications.applicationOf(window.identity), window.identity.pid);
        if (isMeant && (!best || window.lastActive >= best->lastActive))
            best = &window;
    }
    return best;
}

} // namespace fernhop::freedesktop
