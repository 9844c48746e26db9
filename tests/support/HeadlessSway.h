#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <memory>
#include <string>

namespace fernhop::support {

/// A headless wlroots Wayland session. It runs as an ordinary user, in a home of its own.
class HeadlessSway {
  public:
    /// Returns when clients can connect.
    HeadlessSway();

    [[nodiscard]] static bool isAvailable() { return isInstalled("sway"); }

    [[nodiscard]] const TemporaryHome &home() const { return ownHome; }

    /// The variables of the home and of this session. The socket is named by its path,
    /// so it is found from other runtime folders too.
    [[nodiscard]] Environment environment() const;

    /// Starts a client in the session, as its user.
    [[nodiscard]] std::unique_ptr<ChildProcess> start(std::vector<std::string> arguments,
                                                      const Environment &more = {}) const;

    /// Gives sway a command ("[app_id=foot] focus"); false when it refused.
    bool command(const std::string &text) const;

    /// Stops the server: it keeps its connections and stops answering.
    void stop();
    /// Lets it answer again.
    void resume();

    /// Ends the session while its clients are connected.
    void kill();

  private:
    [[nodiscard]] std::string controlSocket() const { return ownHome.runtime() + "/sway.sock"; }

    TemporaryHome ownHome;
    std::unique_ptr<ChildProcess> compositor;
};

} // namespace fernhop::support
