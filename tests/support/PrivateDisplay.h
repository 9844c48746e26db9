#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <memory>
#include <string>

namespace fernhop::support {

/// An X display that nobody sees, with a window manager (openbox).
class PrivateDisplay {
  public:
    /// Returns when the window manager manages the display. The home outlives the display.
    explicit PrivateDisplay(const TemporaryHome &home);

    /// Whether this machine has what it takes.
    [[nodiscard]] static bool isAvailable() { return isInstalled("Xvfb") && isInstalled("openbox"); }

    /// ":7", say.
    [[nodiscard]] const std::string &name() const { return displayName; }

    /// The variables that lead a process to this display.
    [[nodiscard]] Environment environment() const {
        return {{"DISPLAY", displayName}, {"XDG_SESSION_TYPE", "x11"}, {"WAYLAND_DISPLAY", std::nullopt}};
    }

    /// Stops the server: it keeps its connections, and does not answer any more.
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
