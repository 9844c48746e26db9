#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <memory>
#include <string>

namespace fernhop::support {

/// A session bus of its own. It starts only the services whose files are in the home's
/// `dbus-1/services` data folder, with the home's environment.
class PrivateBus {
  public:
    /// `more` goes into the environment of the services that the bus starts. `limits` are further elements of
    /// its configuration. The home outlives the bus.
    explicit PrivateBus(const TemporaryHome &home, const Environment &more = {},
                        const std::string &limits = {});

    [[nodiscard]] const std::string &address() const { return busAddress; }

    /// The variable with the address of this bus.
    [[nodiscard]] Environment environment() const { return {{"DBUS_SESSION_BUS_ADDRESS", busAddress}}; }

    /// Ends the bus while its clients are connected.
    void stop() { daemon->terminate(); }

  private:
    std::string busAddress;
    std::unique_ptr<ChildProcess> daemon;
};

} // namespace fernhop::support
