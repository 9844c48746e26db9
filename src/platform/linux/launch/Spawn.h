#pragma once

#include "platform/linux/base/Environment.h"

#include <sys/types.h>

#include <string>
#include <variant>
#include <vector>

namespace fernhop::freedesktop {

/// A program to be run.
struct SpawnRequest {
    std::vector<std::string> arguments; ///< the program, by path or by name, then its arguments as they are
    Environment environment;            ///< the whole environment of the program; PATH is taken from it
    std::string workingDirectory;       ///< empty: this process's own

    /// A variable that is set to the new process's own identifier; empty: none.
    std::string pidVariable;
};

/// Why a program could not be started.
struct SpawnError {
    int code; ///< an errno value
};

/// Starts a program directly, never through a shell, in a session of its own, with nothing of this process
/// but its standard output and error. Returns when the program runs (the child's identifier; the caller reaps
/// it), or the reason why it cannot: no such program, not executable, an argument too long.
[[nodiscard]] std::variant<pid_t, SpawnError> spawn(const SpawnRequest &request);

/// The file that a program name stands for: itself when it has a slash, else the first executable file of
/// that name in `searchPath` (a PATH value).
[[nodiscard]] std::variant<std::string, SpawnError> findProgram(const std::string &name,
                                                                const std::string &searchPath);

} // namespace fernhop::freedesktop
