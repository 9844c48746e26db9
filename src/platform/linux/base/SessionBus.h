#pragma once

#include "platform/linux/base/Environment.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/Result.h"

namespace fernhop::freedesktop {

/// Whether the session with this environment has a bus to be found: by DBUS_SESSION_BUS_ADDRESS, or as the
/// user's bus in XDG_RUNTIME_DIR. A bus is never started, as nobody else in the session would know it.
[[nodiscard]] bool hasSessionBus(const Environment &environment);

/// The session bus, or why it cannot be reached. The process outlives the connection: it is told of
/// the bus's end, not ended by it.
Result<GObjectPointer<GDBusConnection>> connectToSessionBus(const Environment &environment);

} // namespace fernhop::freedesktop
