#pragma once

#include "platform/Bundle.h"

#include <string>
#include <string_view>

namespace fernhop {

/// What Fernhop is called where its own bundle does not say: also the Linux desktop-file ID and bus name.
inline constexpr std::string_view compiledInBundleID = "org.fernhop.Fernhop";

/// Fernhop's own bundle identifier, read afresh from the main bundle at each call.
[[nodiscard]] inline std::string ownBundleID(const Bundles &bundles) {
    return bundles.mainBundleIdentifier().value_or(std::string(compiledInBundleID));
}

} // namespace fernhop
