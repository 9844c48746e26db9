#pragma once

#include "platform/Bundle.h"

#include <string>
#include <string_view>

namespace fernhop {

/// Fernhop's identifier if its bundle has none; also its desktop-file ID and bus name on Linux.
inline constexpr std::string_view compiledInBundleID = "org.fernhop.Fernhop";

/// Fernhop's own bundle identifier, read from the main bundle at each call.
[[nodiscard]] inline std::string ownBundleID(const Bundles &bundles) {
    return bundles.mainBundleIdentifier().value_or(std::string(compiledInBundleID));
}

} // namespace fernhop
