#pragma once

#include <systemd/sd-bus.h>

#include <string>

namespace fernhop::stub {

/// The `fernhop` that was installed beside this program.
[[nodiscard]] std::string residentProgram();

/// Starts the resident and waits until it, or another one, has `name` on the bus. False when it ended
/// without; `reason` then says why.
[[nodiscard]] bool startResident(sd_bus *bus, const char *name, std::string &reason);

} // namespace fernhop::stub
