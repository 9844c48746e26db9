#pragma once

#include "platform/Workspace.h"

#include <sys/types.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// Which window to bring to the front.
struct RaiseRequest {
    std::string desktopID;    ///< desktop-file ID of the application, without ".desktop"
    std::optional<pid_t> pid; ///< a process of it, where known
};

/// What a session tells about the application that the user is in. One class for each kind of session; where
/// a session tells nothing there is a class that says so. Main thread only; callbacks come from the GLib main
/// loop.
class FocusProvider {
  public:
    virtual ~FocusProvider() = default;

    /// Short name for people: "x11", "wlroots", "plasma", "link sender".
    [[nodiscard]] virtual std::string name() const = 0;

    /// The application in front now; null when none is or nothing tells.
    [[nodiscard]] virtual std::shared_ptr<RunningApplication> frontmost() const = 0;

    /// From now on calls `activated` whenever another application comes to the front. Called once.
    virtual void observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) = 0;

    /// Asks the session to bring a window of an application to the front. False when it cannot; where it has
    /// no window yet, a window that appears soon afterwards is raised.
    virtual bool raise(const RaiseRequest &request) = 0;
};

} // namespace fernhop::freedesktop
