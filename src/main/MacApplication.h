#pragma once

namespace fernhop::macos {

/// Runs Fernhop until it terminates, and returns the exit status of the process. Main thread only.
[[nodiscard]] int runApplication();

} // namespace fernhop::macos
