#pragma once

#include "platform/linux/source/FocusProvider.h"

#include <optional>
#include <utility>

namespace fernhop::freedesktop {

/// Remembers a raise request for which there was no window yet, until the window appears. Forgets it when the
/// user goes on to something else, or after a number of windows that were not meant: a browser that never
/// shows a window must not jump to the front in the middle of other work later.
class PendingRaise {
  public:
    void begin(RaiseRequest newRequest) {
        request = std::move(newRequest);
        remaining = patience;
    }

    [[nodiscard]] const std::optional<RaiseRequest> &awaited() const { return request; }

    /// A window appeared. True when it is the awaited one, which is to be raised now.
    [[nodiscard]] bool windowAppeared(const std::optional<std::string> &desktopID,
                                      const std::optional<pid_t> &pid) {
        if (!request)
            return false;
        const bool isAwaited = matches(*request, desktopID, pid);
        if (isAwaited || --remaining == 0)
            forget();
        return isAwaited;
    }

    /// The user turned to another window that was there before.
    void forget() { request.reset(); }

    /// Whether a window belongs to the application of a request.
    [[nodiscard]] static bool matches(const RaiseRequest &request,
                                      const std::optional<std::string> &desktopID,
                                      const std::optional<pid_t> &pid) {
        return desktopID == request.desktopID || (pid && pid == request.pid);
    }

  private:
    static constexpr int patience = 8;

    std::optional<RaiseRequest> request;
    int remaining = 0;
};

} // namespace fernhop::freedesktop
