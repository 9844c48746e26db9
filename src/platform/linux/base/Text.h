#pragma once

#include <string_view>

namespace fernhop::freedesktop {

/// The part of a path after its last slash.
[[nodiscard]] inline std::string_view fileNameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace fernhop::freedesktop
