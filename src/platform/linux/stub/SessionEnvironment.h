#pragma once

#include "platform/linux/base/Environment.h"

#include <systemd/sd-bus.h>

namespace fernhop::stub {

/// The environment for a resident that this process starts, which lives as long as the session: the one that
/// systemd's user manager on this bus gives to services and, for what that does not say about displays and
/// desktop, `own`. Without such a manager `own`, this process's environment, without what belongs to its own
/// launch. Waits for the manager at most some seconds.
[[nodiscard]] freedesktop::Environment sessionEnvironment(sd_bus *bus, const freedesktop::Environment &own);

} // namespace fernhop::stub
