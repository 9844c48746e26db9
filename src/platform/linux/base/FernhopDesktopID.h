#pragma once

#include <string_view>

namespace fernhop::freedesktop {

/// The desktop-file ID under which Fernhop is installed, also its name on the session bus.
inline constexpr std::string_view fernhopDesktopID = "org.fernhop.Fernhop";

} // namespace fernhop::freedesktop
