#pragma once

#include "desktop/links/LinkSession.h"
#include "support/PrivateDisplay.h"

#include <memory>
#include <string>
#include <vector>

namespace fernhop::desktoptest {

/// A session with a display, a window manager and a real panel, which has nothing but the tray in it. The
/// browser "web" is the default, not Fernhop.
class PanelSession : public LinkSession {
  public:
    /// What this machine lacks to have one; empty: nothing.
    [[nodiscard]] static std::string missing();

    /// Starts the display and the bus; neither Fernhop nor the panel.
    PanelSession();

    void startPanel();

    /// Sends pointer and keys as `xdotool` takes them; the exit status.
    int input(std::vector<std::string> words);

    /// Clicks at a place of the screen.
    int click(int left, int top);

    /// The default application of https, as GIO tells it: "web.desktop"; empty: none.
    [[nodiscard]] std::string defaultHandler();

    std::unique_ptr<support::PrivateDisplay> display;

  private:
    std::unique_ptr<support::ChildProcess> panel;
};

/// The bytes of a file; none when there is no such file.
[[nodiscard]] std::string contentsOf(const std::string &path);

} // namespace fernhop::desktoptest
