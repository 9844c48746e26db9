#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <memory>
#include <string>

namespace fernhop::support {

/// A headless Plasma Wayland session: KWin with a virtual output, in a home of its own.
/// Every client may manage windows. KWin must be able to see which program a client is, so it runs as the
/// same user as the test.
class HeadlessKWin {
  public:
    /// Returns when clients can connect.
    HeadlessKWin();

    [[nodiscard]] static bool isAvailable() { return isInstalled("kwin_wayland"); }

    [[nodiscard]] const TemporaryHome &home() const { return ownHome; }

    /// The variables of the home and of this session.
    [[nodiscard]] Environment environment() const;

    /// Starts a client in the session.
    [[nodiscard]] std::unique_ptr<ChildProcess> start(std::vector<std::string> arguments,
                                                      const Environment &more = {}) const;

    /// Stops the server: it keeps its connections and stops answering.
    void stop();
    /// Lets it answer again.
    void resume();

    /// Ends the session while its clients are connected.
    void kill();

  private:
    TemporaryHome ownHome;
    std::unique_ptr<ChildProcess> compositor;
};

} // namespace fernhop::support
