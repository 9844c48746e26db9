#pragma once

#include "platform/ResidentConnection.h"
#include "platform/linux/base/GPointer.h"

#include <string>

namespace fernhop::freedesktop {

/// The running Fernhop, over the session bus.
class BusResidentConnection : public ResidentConnection {
  public:
    /// `linkProgram` is `fernhop-open`, which knows how to deliver links so that none is lost.
    /// `activationToken` is the desktop's for what this process does; empty: none.
    BusResidentConnection(GObjectPointer<GDBusConnection> bus, std::string linkProgram,
                          std::string activationToken);

    [[nodiscard]] std::optional<CommandResult> perform(const std::vector<std::string> &arguments,
                                                       std::string_view input) override;
    [[nodiscard]] std::vector<std::string> open(const std::vector<Url> &links) override;

  private:
    GObjectPointer<GDBusConnection> bus;
    std::string linkProgram;
    std::string activationToken;
};

} // namespace fernhop::freedesktop
