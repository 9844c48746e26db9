#pragma once

#include <string_view>

namespace fernhop {

/// The version of this program, such as "1.0.0".
[[nodiscard]] const char *programVersion();

/// Whether a program of Fernhop that states `version` must not work together with this one: what they tell
/// each other in calls and arguments may change with every version.
[[nodiscard]] inline bool isOtherVersion(std::string_view version) {
    return version != programVersion();
}

} // namespace fernhop
