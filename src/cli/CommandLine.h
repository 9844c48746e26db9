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

/// What the client process provides to its command line. The functions are called only by commands that need
/// them, so the others start quickly.
struct Process {
    std::istream &input;
    std::ostream &output;
    std::ostream &errors;
    /// Connects to the session; null when there is no session bus.
    std::function<std::unique_ptr<ResidentConnection>()> connect;
    /// Performs a command in this process, for when no Fernhop is running.
    std::function<CommandResult(const std::vector<std::string> &arguments, std::string_view input)>
        performHere;
    /// Routes links in this process, in their order, for when there is no session bus. Returns what
    /// `ResidentConnection::open` does.
    std::function<std::vector<std::string>(const std::vector<Url> &links)> openHere;
};

/// Runs the command line of `fernhop`. `arguments` do not include the program's name. The result is the exit
/// status; nothing when there are no arguments and the process must become the resident.
[[nodiscard]] std::optional<int> runCommandLine(const std::vector<std::string> &arguments,
                                                const Process &process);

} // namespace fernhop::cli
