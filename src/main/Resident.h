#pragma once

#include "platform/linux/base/Environment.h"

#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Runs Fernhop in this session until it is ended; the exit status. When it runs already this returns at
/// once, with status 0. `environment` is the process's, as it was at its start.
[[nodiscard]] int runResident(const Environment &environment);

/// Routes links within this process, once, for a session without a bus.
void openWithoutBus(const Environment &environment, const std::vector<std::string> &links);

} // namespace fernhop::freedesktop
