#pragma once

#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/FocusProvider.h"
#include "platform/linux/source/WaylandConnection.h"
#include "platform/linux/source/WindowFocus.h"

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// A window of a Wayland session, kept up to date by a `WaylandWindowFeed`.
struct WaylandWindow {
    WindowIdentity identity;
    bool isActive = false;
    bool isDescribed = false;       ///< the compositor has described it completely
    bool isClosed = false;          ///< `WaylandWindows::settle` removes it
    std::function<void()> activate; ///< asks the compositor to bring it to the front
    std::shared_ptr<void> handle;   ///< the compositor's object, destroyed with the window

    // These are for `WaylandWindows`:
    std::uint64_t lastActive = 0;         ///< the higher the later
    bool isNew = true;                    ///< not yet looked at
    bool isOlderThanRaiseRequest = false; ///< than the last one
};

/// All windows of a Wayland session, the focused one, and the one that is to be focused. Main thread only.
class WaylandWindows {
  public:
    /// The matcher outlives this object.
    explicit WaylandWindows(ApplicationMatcher &matcher) : applications(matcher) {}

    /// Adds a window that the compositor announced. It keeps its address until it is removed.
    WaylandWindow &add() { return windows.emplace_back(); }
    void removeAll();

    /// Looks at what has changed. Called after each batch of events: within one there may be no active
    /// window, or two.
    void settle();

    /// As `FocusProvider::raise`.
    void raise(const RaiseRequest &request);

    [[nodiscard]] FrontApplication &front() { return frontApplication; }
    [[nodiscard]] const FrontApplication &front() const { return frontApplication; }

  private:
    [[nodiscard]] WaylandWindow *activeWindow();
    [[nodiscard]] WaylandWindow *windowFor(const RaiseRequest &request);
    void removeClosed();
    void noticeFocus(WaylandWindow *active);
    void noticeNewWindows();

    ApplicationMatcher &applications;
    FrontApplication frontApplication;
    PendingRaise pending;
    std::list<WaylandWindow> windows;
    const WaylandWindow *lastFront = nullptr;
    std::uint64_t activations = 0;
};

/// Keeps a `WaylandWindows` up to date as long as it lives, by one of the protocols that show a session's
/// windows.
class WaylandWindowFeed {
  public:
    virtual ~WaylandWindowFeed() = default;
};

/// The feed of wlroots compositors (sway and others), by zwlr_foreign_toplevel_management_unstable_v1; null
/// when the compositor does not offer it. Both arguments outlive the feed. The windows are known after two
/// synchronizations of the connection.
[[nodiscard]] std::unique_ptr<WaylandWindowFeed> makeForeignToplevelFeed(const WaylandConnection &connection,
                                                                         WaylandWindows &windows);

/// The same for Plasma's compositor, by org_kde_plasma_window_management, which is offered only to programs
/// whose desktop entry asks for it.
[[nodiscard]] std::unique_ptr<WaylandWindowFeed> makePlasmaWindowFeed(const WaylandConnection &connection,
                                                                      WaylandWindows &windows);

/// Follows the active window of a Wayland session. Without the compositor no application is focused.
class WaylandFocusProvider : public FocusProvider {
  public:
    /// Null when there is no such display, or its compositor shows us no windows. The matcher outlives the
    /// provider.
    [[nodiscard]] static std::unique_ptr<WaylandFocusProvider> connect(const std::string &display,
                                                                       ApplicationMatcher &matcher);

    [[nodiscard]] std::string name() override { return protocol; }
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() override;
    void observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) override;
    bool raise(const RaiseRequest &request) override;

  private:
    WaylandFocusProvider(const std::string &display, ApplicationMatcher &matcher);

    WaylandConnection connection;
    std::string protocol;
    std::unique_ptr<WaylandWindowFeed> feed; ///< null: the compositor offers none, or is gone
    WaylandWindows windows;
};

} // namespace fernhop::freedesktop
