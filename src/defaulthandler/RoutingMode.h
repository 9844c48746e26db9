#pragma once

#include "platform/Bundle.h"
#include "platform/LaunchServices.h"

namespace fernhop {

/// Whether App Routing is on: the system's handler of "https" is Fernhop itself. The mode is stored nowhere
/// else, so it is asked of the system each time. The handler of "http" plays no part.
[[nodiscard]] bool isRoutingEnabled(const LaunchServices &launchServices, const Bundles &bundles);

} // namespace fernhop
