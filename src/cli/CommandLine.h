#pragma once

#include "platform/CommandResult.h"
#include "platform/ResidentConnection.h"
#include "platform/Url.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::cli {

/// What the client process lends its command line. The functions are called only by commands that need
/// them, so that the others start quickly.
struct Process {
    std::istream &input;
    std::ostream &output;
    std::ostream &errors;
    /// Makes the connection to the session; null when there is no session to connect to.
    std::function<std::unique_ptr<ResidentConnection>()> connect;
    /// Performs a command within this process, for when no Fernhop runs.
    std::function<CommandResult(const std::vector<std::string> &arguments, std::string_view input)>
        performHere;
    /// Routes links within this process, in their order, for where there is no session.
    std::function<void(const std::vector<Url> &links)> openHere;
};

/// Runs the command line of `fernhop`. `arguments` are the words after the program's name. The result is the
/// exit status; nothing when the process is to become the resident (there were no arguments).
[[nodiscard]] std::optional<int> runCommandLine(const std::vector<std::string> &arguments,
                                                const Process &process);

} // namespace fernhop::cli
