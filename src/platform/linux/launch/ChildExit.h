#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// How long after its start the end of an application still counts as a failure to start.
inline constexpr std::chrono::seconds earlyExitWindow{10};

/// Why a launched application that ended did not open its link, in the user's language; nothing when it did.
/// A browser that handed over to its running instance ends at once with 0; a launcher script whose program is
/// missing or broken ends at once with 126, 127 or 255, or by a signal. What ends later has run.
///
/// `waitStatus` is that of waitpid(2), `lived` the time from start to end.
[[nodiscard]] std::optional<std::string> launchFailure(int waitStatus, std::chrono::nanoseconds lived);

} // namespace fernhop::freedesktop
