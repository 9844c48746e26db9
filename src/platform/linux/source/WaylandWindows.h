#pragma once

#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/FrontApplication.h"
#include "platform/linux/source/PendingRaise.h"
#include "platform/linux/source/WindowIdentity.h"

#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// A window of a Wayland session, kept up to date by the protocol that tells of it.
struct WaylandWindow {
    WindowIdentity identity;
    bool isActive = false;
    bool isDescribed = false;       ///< the compositor has told all that it knows of it
    std::function<void()> activate; ///< asks the compositor to bring it to the front

    std::uint64_t lastActive = 0; ///< the higher the later, by `WaylandWindows`
    bool isNew = true;            ///< not yet looked at by `WaylandWindows`
    bool wasThere = false;        ///< when a raise was asked for last
};

/// All windows of a Wayland session, what is in front of them, and which is to be. Main thread only.
class WaylandWindows {
  public:
    /// The matcher outlives this object.
    explicit WaylandWindows(ApplicationMatcher &matcher) : applications(matcher) {}

    /// A window that the compositor began to tell of. It stays where it is until `remove`.
    WaylandWindow &add();
    void remove(const WaylandWindow &window);
    void removeAll();

    /// Looks at what has changed. Called when the compositor has said all that it had to say for now: within
    /// a batch there may be no active window, or two.
    void settle();

    /// As `FocusProvider::raise`.
    void raise(const RaiseRequest &request);

    [[nodiscard]] FrontApplication &front() { return frontApplication; }
    [[nodiscard]] const FrontApplication &front() const { return frontApplication; }

  private:
    [[nodiscard]] WaylandWindow *activeWindow();
    [[nodiscard]] WaylandWindow *windowFor(const RaiseRequest &request);
    void noticeFocus(WaylandWindow *active);
    void noticeNewWindows();

    ApplicationMatcher &applications;
    FrontApplication frontApplication;
    PendingRaise pending;
    std::list<WaylandWindow> windows;
    const WaylandWindow *lastFront = nullptr;
    std::uint64_t activations = 0;
};

} // namespace fernhop::freedesktop
