#pragma once

#include "platform/linux/base/Environment.h"
#include "platform/linux/source/LinkDelivery.h"

#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Runs Fernhop in this session until it is ended; the exit status. When it runs already this returns at
/// once, with status 0. `environment` is the process's, as it was at its start.
[[nodiscard]] int runResident(const Environment &environment);

/// Routes links within this process, once, for a session without a bus. Returns when each is in a browser's
/// hands or has failed, with those that were not opened.
[[nodiscard]] std::vector<UnopenedLink> openWithoutBus(const Environment &environment,
                                                       const std::vector<std::string> &links);

} // namespace fernhop::freedesktop
