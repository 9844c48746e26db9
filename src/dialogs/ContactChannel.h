#pragma once

#include <array>
#include <string>

namespace fernhop {

/// A way to reach the developer.
struct ContactChannel {
    std::string title;              ///< shown first on the button
    std::string detail;             ///< the address or handle shown after it
    std::string urlString;          ///< the link that the button opens
    std::string iconResourceName;   ///< base name of a PNG among the resources
    std::string fallbackSymbolName; ///< system symbol used when that PNG is not there
};

/// The channels in the order in which they show. Their addresses are chosen when Fernhop is built.
[[nodiscard]] const std::array<ContactChannel, 4> &contactChannels();

} // namespace fernhop
