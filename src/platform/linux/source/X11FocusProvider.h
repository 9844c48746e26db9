#pragma once

#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/FocusProvider.h"
#include "platform/linux/source/WindowFocus.h"
#include "platform/linux/source/XConnection.h"
#include "platform/linux/source/XWindows.h"

#include <memory>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Follows the active window on an X11 desktop, by what its window manager publishes on the root window.
/// Without the server no application is focused.
class X11FocusProvider : public FocusProvider {
  public:
    /// Null when there is no such display. The matcher outlives the provider.
    [[nodiscard]] static std::unique_ptr<X11FocusProvider> connect(const std::string &display,
                                                                   ApplicationMatcher &matcher);

    [[nodiscard]] std::string name() override { return "x11"; }
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() override;
    void observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) override;
    bool raise(const RaiseRequest &request) override;
    [[nodiscard]] std::optional<std::string> announceStartup(const StartupAnnouncement &startup) override;
    void withdrawStartup(const std::string &startupID) override;

  private:
    X11FocusProvider(const std::string &displayName, ApplicationMatcher &matcher);

    void handle(const xcb_generic_event_t &event);
    void activeWindowChanged();
    void clientListChanged();
    void readActiveWindow();
    void watchActiveWindow(bool watch);
    [[nodiscard]] std::optional<std::string> applicationOf(const XWindow &window);

    const std::string display;
    XConnection connection;
    XWindows windows;
    ApplicationMatcher &applications;
    FrontApplication front;
    PendingRaise pending;
    std::vector<xcb_window_t> windowsAtRaise;    ///< those that were open when a raise was requested last
    std::vector<xcb_window_t> windowsSinceRaise; ///< those that have appeared since
    xcb_window_t activeWindow = XCB_WINDOW_NONE;
    bool watchesActiveWindow = false;
};

} // namespace fernhop::freedesktop
