#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <memory>
#include <string>

namespace fernhop::support {

/// A headless X display with a window manager (openbox).
class PrivateDisplay {
  public:
    /// Returns when the window manager manages the display. The home outlives the display.
    explicit PrivateDisplay(const TemporaryHome &home);

    /// Whether the needed programs are installed.
    [[nodiscard]] static bool isAvailable() { return isInstalled("Xvfb") && isInstalled("openbox"); }

    /// ":7", say.
    [[nodiscard]] const std::string &name() const { return displayName; }

    /// The variables of this display.
    [[nodiscard]] Environment environment() const {
        return {{"DISPLAY", displayName}, {"XDG_SESSION_TYPE", "x11"}, {"WAYLAND_DISPLAY", std::nullopt}};
    }

    /// Stops the server: it keeps its connections and stops answering.
    void stop();
    /// Lets it answer again.
    void resume();

    /// Ends the server while its clients are connected.
    void kill();

  private:
    std::string displayName;
    std::unique_ptr<ChildProcess> server;
    std::unique_ptr<ChildProcess> windowManager;
};

} // namespace fernhop::support
