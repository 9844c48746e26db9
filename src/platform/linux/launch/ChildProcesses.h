#pragma once

#include "platform/linux/base/Environment.h"
#include "platform/linux/base/Result.h"
#include "platform/linux/base/Timer.h"

#include <glib.h>
#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Child processes: starting them, waiting for their end, and what their end means.
namespace fernhop::freedesktop {

/// A program to be run.
struct SpawnRequest {
    std::vector<std::string> arguments; ///< the program, by path or by name, then its arguments as they are
    Environment environment;            ///< the whole environment of the program; PATH is taken from it
    std::string workingDirectory = {};  ///< empty: this process's own
};

/// Starts a program directly, never through a shell, in a session of its own. It inherits nothing of this
/// process but standard output and error. GIO_LAUNCHED_DESKTOP_FILE_PID is set to its own identifier. Returns
/// when the program runs (the child's identifier; the caller reaps it), or the reason why it cannot: no such
/// program, not executable, an argument too long.
[[nodiscard]] Result<pid_t> spawn(SpawnRequest request);

/// The longest argument that a program takes, in bytes without the zero byte at its end.
[[nodiscard]] std::size_t longestArgument();

/// The file that a program name stands for: itself when it has a slash, else the first executable file of
/// that name in `searchPath` (a PATH value).
[[nodiscard]] Result<std::string> findProgram(const std::string &name, const std::string &searchPath);

/// How long after its start the end of an application still counts as a failure to start.
inline constexpr std::chrono::seconds earlyExitWindow{10};

/// Why a launched application that ended did not open its link; nothing when it did. A browser that handed
/// over to its running instance ends at once with 0; a launcher script whose program is missing or broken
/// ends at once with 126, 127 or 255, or by a signal. What ends later has run.
///
/// `waitStatus` is that of waitpid(2), `lived` the time from start to end.
[[nodiscard]] std::optional<Failure> launchFailure(int waitStatus, std::chrono::nanoseconds lived);

/// Waits, through the default main loop, for the end of processes that this one started, and reaps them. Main
/// thread only.
class ChildWatches {
  public:
    /// Called with the status of waitpid(2).
    using Ended = std::function<void(int waitStatus)>;

    ChildWatches() = default;

    /// Stops waiting; the processes live on, and their callbacks are dropped.
    ~ChildWatches();
    ChildWatches(const ChildWatches &) = delete;
    ChildWatches &operator=(const ChildWatches &) = delete;

    /// Calls `ended` once, when the child ends. `child` must not have been reaped.
    void watch(pid_t child, Ended ended);

  private:
    struct Watch {
        guint source; ///< 0: `look` notices its end
        std::chrono::steady_clock::time_point begin;
        Ended ended;
    };

    void end(pid_t child, int waitStatus);
    void lookForEnded();

    std::map<pid_t, Watch> watches;
    Timer look; ///< runs while there are children without a descriptor
};

} // namespace fernhop::freedesktop
