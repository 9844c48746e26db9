#pragma once

#include "platform/CommandResult.h"
#include "platform/Url.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// The connection from the client process to the Fernhop running in the session. Each call blocks.
class ResidentConnection {
  public:
    virtual ~ResidentConnection() = default;

    /// Has the running Fernhop perform a command; nothing when none is running, and none is started.
    /// `arguments` must be valid UTF-8; `input` may be any bytes. If Fernhop ends before it answers, the
    /// result is a failure with that message.
    [[nodiscard]] virtual std::optional<CommandResult> perform(const std::vector<std::string> &arguments,
                                                               std::string_view input) = 0;

    /// Delivers links in their order, as another application would, and starts Fernhop if it is not running.
    /// Returns when each is in a browser's hands or has failed: which were not opened and why, in sentences
    /// for people; empty on success.
    [[nodiscard]] virtual std::vector<std::string> open(const std::vector<Url> &links) = 0;
};

} // namespace fernhop
