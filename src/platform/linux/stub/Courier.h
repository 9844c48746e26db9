#pragma once

#include "platform/linux/stub/LinkOrigin.h"

#include <string>
#include <vector>

namespace fernhop::stub {

/// How a delivery ended.
struct DeliveryResult {
    enum class Kind {
        delivered, ///< the resident has handled every link
        noBus,     ///< there is no session bus
        replaced,  ///< nothing was opened: the program now at this one's path is to deliver the links
        refused,   ///< nothing was opened: the resident remains one of another version
        failed,
    };
    Kind kind;
    std::string reason; ///< of the failure
};

/// Hands links to the resident over the session bus, all in one call, and waits until it has handled them.
/// When no resident runs, the bus starts it or, where the bus does not know it, this process does. When the
/// resident ends before it has answered, the links are delivered again. Without links the resident is only
/// started.
[[nodiscard]] DeliveryResult deliver(const std::vector<std::string> &links, const LinkOrigin &origin);

} // namespace fernhop::stub
