#include "platform/linux/source/X11FocusProvider.h"

#include <algorithm>

namespace fernhop::freedesktop {
namespace {

bool contains(const std::vector<xcb_window_t> &windows, xcb_window_t window) {
    return std::ranges::find(windows, window) != windows.end();
}

} // namespace

std::unique_ptr<X11FocusProvider> X11FocusProvider::connect(const std::string &display,
                                                            ApplicationMatcher &matcher) {
    std::unique_ptr<X11FocusProvider> provider(new X11FocusProvider(display, matcher));
    return provider->connection.isAlive() ? std::move(provider) : nullptr;
}

X11FocusProvider::X11FocusProvider(const std::string &displayName, ApplicationMatcher &matcher)
    : display(displayName), connection(display), windows(connection), applications(matcher) {
    if (!connection.isAlive())
        return;
    windows.watchProperties(connection.root(), true);
    connection.listen([this](const xcb_generic_event_t &event) { handle(event); },
                      [this] {
                          front.clear();
                          pending.forget();
                          displayEnded();
                      });
    activeWindowChanged();
}

std::shared_ptr<RunningApplication> X11FocusProvider::frontmost() {
    // The event about a change that has just happened may be on its way.
    activeWindowChanged();
    return front.current();
}

void X11FocusProvider::observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) {
    front.observe(std::move(activated));
}

void X11FocusProvider::handle(const xcb_generic_event_t &event) {
    constexpr std::uint8_t sentByClient = 0x80;
    if ((event.response_type & ~sentByClient) != XCB_PROPERTY_NOTIFY)
        return;
    const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
    if (change.window == connection.root() && change.atom == windows.activeWindowProperty())
        activeWindowChanged();
    else if (change.window == connection.root() && change.atom == windows.clientListProperty())
        clientListChanged();
    else if (change.window == activeWindow && windows.isIdentityProperty(change.atom))
        readActiveWindow();
}

void X11FocusProvider::activeWindowChanged() {
    const xcb_window_t window = windows.active();
    if (window == activeWindow)
        return;
    if (contains(windowsAtRaise, window))
        pending.forget();
    watchActiveWindow(false);
    activeWindow = window;
    readActiveWindow();
}

void X11FocusProvider::readActiveWindow() {
    const XWindow window =
        activeWindow == XCB_WINDOW_NONE ? XWindow{} : windows.describe({activeWindow}).front();
    if (window.id == XCB_WINDOW_NONE || window.isPartOfDesktop) {
        front.clear();
        return;
    }
    const auto application = applicationOf(window);
    // Some programs set their names only after their window has appeared.
    watchActiveWindow(!application);
    front.set(application);
}

void X11FocusProvider::watchActiveWindow(bool watch) {
    if (watch == watchesActiveWindow)
        return;
    watchesActiveWindow = watch;
    windows.watchProperties(activeWindow, watch);
}

std::optional<std::string> X11FocusProvider::applicationOf(const XWindow &window) {
    return applications.applicationOf(window.identity);
}

bool X11FocusProvider::raise(const RaiseRequest &request) {
    if (!connection.isAlive())
        return false;
    windowsAtRaise = windows.managed();
    windowsSinceRaise.clear();
    auto candidates = windows.describe(windowsAtRaise);
    std::reverse(candidates.begin(), candidates.end());
    for (const auto &window : candidates) {
        if (!window.isPartOfDesktop &&
            PendingRaise::matches(request, applicationOf(window), window.identity.pid)) {
            windows.activate(window.id);
            pending.forget();
            return true;
        }
    }
    pending.begin(request);
    return true;
}

void X11FocusProvider::clientListChanged() {
    if (!pending.isWaiting())
        return;
    std::vector<xcb_window_t> added = windows.managed();
    std::erase_if(added, [this](xcb_window_t window) {
        return contains(windowsAtRaise, window) || contains(windowsSinceRaise, window);
    });
    windowsSinceRaise.insert(windowsSinceRaise.end(), added.begin(), added.end());
    for (const auto &window : windows.describe(added))
        if (pending.windowAppeared(applicationOf(window), window.identity.pid))
            windows.activate(window.id);
}

std::optional<std::string> X11FocusProvider::announceStartup(const StartupAnnouncement &startup) {
    return fernhop::freedesktop::announceStartup(display, startup);
}

void X11FocusProvider::withdrawStartup(const std::string &startupID) {
    fernhop::freedesktop::withdrawStartup(display, startupID);
}

} // namespace fernhop::freedesktop
