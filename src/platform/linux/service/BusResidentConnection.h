#pragma once

#include "platform/ResidentConnection.h"
#include "platform/linux/base/GPointer.h"

#include <chrono>
#include <functional>
#include <string>

namespace fernhop::freedesktop {

/// How long a command waits for the running Fernhop.
struct AnswerPatience {
    std::chrono::milliseconds untilNotice{2'000}; ///< then the user is told
    std::chrono::milliseconds untilEnd{10'000};   ///< then the command fails
};

/// The running Fernhop, over the session bus.
class BusResidentConnection : public ResidentConnection {
  public:
    /// `linkProgram` is `fernhop-open`, which knows how to deliver links so that none is lost.
    /// `activationToken` is the desktop's for what this process does; empty: none. `notify` is called with a
    /// sentence for the user when the running Fernhop takes long.
    BusResidentConnection(GObjectPointer<GDBusConnection> bus, std::string linkProgram,
                          std::string activationToken, std::function<void(const std::string &)> notify,
                          AnswerPatience patience = {});

    [[nodiscard]] std::optional<CommandResult> perform(const std::vector<std::string> &arguments,
                                                       std::string_view input) override;
    [[nodiscard]] std::vector<std::string> open(const std::vector<Url> &links) override;

  private:
    struct Answer;

    [[nodiscard]] Answer call(GVariant *body) const;

    GObjectPointer<GDBusConnection> bus;
    std::string linkProgram;
    std::string activationToken;
    std::function<void(const std::string &)> notify;
    AnswerPatience patience;
};

} // namespace fernhop::freedesktop
