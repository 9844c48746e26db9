#pragma once

#include <string>

namespace fernhop {

/// The exit statuses of the command line.
namespace exitStatus {
inline constexpr int success = 0;
inline constexpr int failure = 1; ///< the command failed, or the answer is "no"
inline constexpr int usage = 2;   ///< the command was not understood
} // namespace exitStatus

/// The result of a command. The texts are UTF-8 and end with a newline unless they are empty.
struct CommandResult {
    int status = exitStatus::success;
    std::string output; ///< for standard output
    std::string errors; ///< for standard error

    bool operator==(const CommandResult &) const = default;
};

} // namespace fernhop
