#pragma once

#include <string_view>

namespace fernhop::freedesktop {

/// Whether a desktop entry is Xfce's "Web Browser", which asks helpers.rc what to open; it had the second
/// name up to Xfce 4.14.
[[nodiscard]] constexpr bool isXfceOpener(std::string_view id) {
    return id == "xfce4-web-browser" || id == "exo-web-browser";
}

} // namespace fernhop::freedesktop
