#pragma once

#include "platform/CommandResult.h"
#include "platform/Url.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// The way from the client process to the Fernhop that runs in the session. Each call blocks.
class ResidentConnection {
  public:
    virtual ~ResidentConnection() = default;

    /// Has the running Fernhop perform a command; nothing when none runs, and none is started. `arguments`
    /// must be valid UTF-8; `input` may be any bytes. When Fernhop ends before it has answered, the result is
    /// a failure that says so.
    [[nodiscard]] virtual std::optional<CommandResult> perform(const std::vector<std::string> &arguments,
                                                               std::string_view input) = 0;

    /// Delivers links in their order, as another application would, and starts Fernhop when it does not run.
    /// Nothing when they were taken; else why not, in words.
    [[nodiscard]] virtual std::optional<std::string> open(const std::vector<Url> &links) = 0;
};

} // namespace fernhop
