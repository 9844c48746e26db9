#pragma once

#include "platform/linux/stub/LinkOrigin.h"

#include <string>
#include <vector>

namespace fernhop::stub {

/// How a delivery ended.
struct DeliveryResult {
    enum class Kind {
        delivered, ///< the resident has dealt with every link
        noBus,     ///< there is no session bus
        failed,
    };
    Kind kind;
    std::string reason; ///< of the failure
};

/// Hands links to the resident over the session bus, all in one call, and waits until it has dealt with them.
/// Starts the resident when it does not run, by the bus or, where the bus does not know it, by itself;
/// delivers anew when it dies first. Without links the resident is only started.
[[nodiscard]] DeliveryResult deliver(const std::vector<std::string> &links, const LinkOrigin &origin);

} // namespace fernhop::stub
