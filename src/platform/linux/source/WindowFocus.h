#pragma once

#include "platform/linux/source/FocusProvider.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

/// What the providers of all sessions that show their windows have in common.
namespace fernhop::freedesktop {

/// The focused application, and the observer of its changes. Main thread only.
class FrontApplication {
  public:
    using Observer = std::function<void(std::shared_ptr<RunningApplication>)>;

    /// Null when no application is in front.
    [[nodiscard]] const std::shared_ptr<RunningApplication> &current() const { return application; }

    void observe(Observer newObserver) { observer = std::move(newObserver); }

    /// A window of this application is in front now; no ID: of an unknown one. Notifies the observer when it
    /// is another application than before.
    void set(const std::optional<std::string> &desktopID) {
        if (application && application->bundleIdentifier() == desktopID)
            return;
        application = std::make_shared<DesktopApplication>(desktopID);
        if (observer)
            observer(application);
    }

    /// No application is in front now.
    void clear() { application.reset(); }

  private:
    std::shared_ptr<RunningApplication> application;
    Observer observer;
};

/// A raise request for which there was no window yet, kept until the window appears. It is forgotten when the
/// user goes on to something else, or after some windows of other applications: a browser that shows no
/// window must not jump to the front in the middle of other work later. Main thread only.
class PendingRaise {
  public:
    void begin(RaiseRequest newRequest) {
        request = std::move(newRequest);
        remaining = patience;
    }

    [[nodiscard]] bool isWaiting() const { return request.has_value(); }

    /// A window appeared. True when it is the one waited for, which is to be raised now.
    [[nodiscard]] bool windowAppeared(const std::optional<std::string> &desktopID,
                                      const std::optional<pid_t> &pid) {
        if (!request)
            return false;
        const bool isAwaited = matches(*request, desktopID, pid);
        if (isAwaited || --remaining == 0)
            forget();
        return isAwaited;
    }

    /// The user focused a window that had been there before the request.
    void forget() { request.reset(); }

    /// Whether a window belongs to the application of a request.
    [[nodiscard]] static bool matches(const RaiseRequest &request,
                                      const std::optional<std::string> &desktopID,
                                      const std::optional<pid_t> &pid) {
        return desktopID == request.desktopID || (pid && pid == request.pid);
    }

  private:
    static constexpr int patience = 8; ///< windows of other applications

    std::optional<RaiseRequest> request;
    int remaining = 0;
};

} // namespace fernhop::freedesktop
