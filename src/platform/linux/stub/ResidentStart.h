#pragma once

#include <systemd/sd-bus.h>

#include <string>

namespace fernhop::stub {

/// How an attempt to start the resident ended.
enum class StartResult {
    present, ///< it, or one that somebody else started, has its name on the bus
    failed,  ///< it could not be started, or ended before it had its name
    hangs,   ///< none had its name after a long wait
};

/// Has a resident on the bus where none is and the bus cannot start it. Of all processes that call this at
/// the same time one starts it and the others wait, each for a limited time. `reason` is set unless the
/// resident is present.
[[nodiscard]] StartResult startResident(sd_bus *bus, std::string &reason);

/// Whether an upgrade has put another program in this one's place, and has written it completely: it runs.
[[nodiscard]] bool canBeReplaced();

} // namespace fernhop::stub
