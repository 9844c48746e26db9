#pragma once

#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/FocusProvider.h"
#include "platform/linux/source/WaylandConnection.h"
#include "platform/linux/source/WaylandWindows.h"
#include "platform/linux/source/WindowSource.h"

#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// Follows the active window of a Wayland session by whichever protocol its compositor tells of windows. When
/// the compositor goes away it tells nothing any more.
class WaylandFocusProvider : public FocusProvider {
  public:
    /// Null when there is no such display, or its compositor tells us of no windows. The matcher outlives the
    /// provider.
    [[nodiscard]] static std::unique_ptr<WaylandFocusProvider> connect(const std::string &display,
                                                                       ApplicationMatcher &matcher);

    [[nodiscard]] std::string name() const override { return protocol; }
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() const override;
    void observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) override;
    bool raise(const RaiseRequest &request) override;

  private:
    WaylandFocusProvider(std::unique_ptr<WaylandConnection> compositor, ApplicationMatcher &matcher);
    void beginToFollow();

    std::unique_ptr<WaylandConnection> connection;
    WaylandWindows windows;
    std::string protocol;
    std::unique_ptr<WindowSource> source; ///< null: the compositor offers no protocol
};

} // namespace fernhop::freedesktop
