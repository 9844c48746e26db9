#pragma once

#include <string>
#include <string_view>

namespace fernhop::freedesktop {

/// The name to look up in the icon theme for the `Icon` of a desktop entry, or its path. Names with the
/// ending of a file are against the rules of desktop entries, and common.
[[nodiscard]] inline std::string iconName(std::string icon) {
    if (icon.starts_with('/'))
        return icon;
    for (const std::string_view ending : {".png", ".svg", ".xpm"})
        if (icon.size() > ending.size() && icon.ends_with(ending))
            icon.resize(icon.size() - ending.size());
    return icon;
}

} // namespace fernhop::freedesktop
