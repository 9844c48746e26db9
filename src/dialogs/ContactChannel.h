#pragma once

#include <array>
#include <string>

namespace fernhop {

/// A way to contact the developer.
struct ContactChannel {
    std::string title;              ///< shown first on the button
    std::string detail;             ///< the address or handle shown after it
    std::string urlString;          ///< the link that the button opens
    std::string iconResourceName;   ///< base name of a PNG among the resources
    std::string fallbackSymbolName; ///< system symbol to use without that PNG
};

/// The channels in display order. Their addresses are configured when Fernhop is built.
[[nodiscard]] const std::array<ContactChannel, 4> &contactChannels();

} // namespace fernhop
