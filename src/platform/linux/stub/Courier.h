#pragma once

#include "platform/linux/base/UnopenedLink.h"
#include "platform/linux/stub/LinkOrigin.h"

#include <string>
#include <vector>

namespace fernhop::stub {

/// How a delivery ended.
struct DeliveryResult {
    enum class Kind {
        delivered, ///< the resident has handled every link
        noBus,     ///< there is no session bus that lets this process in
        replaced,  ///< nothing was opened: the program now at this one's path is to deliver the links
        notTaken,  ///< no resident has answered for the links, and to try again is no use
    };
    Kind kind;
    std::string reason;                              ///< why not, unless they were delivered
    std::vector<freedesktop::UnopenedLink> unopened; ///< of those delivered
};

/// Hands links to the resident over the session bus, all in one call, and waits until it has handled them.
/// When no resident runs, the bus starts it or, where the bus does not know it, this process does. When the
/// resident ends before it has answered, the links are delivered again, a limited number of times. Without
/// links the resident is only started.
[[nodiscard]] DeliveryResult deliver(const std::vector<std::string> &links, const LinkOrigin &origin);

} // namespace fernhop::stub
