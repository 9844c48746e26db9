#pragma once

#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// What has to stand before a command so that it runs in a terminal window, with a terminal emulator that is
/// in `searchPath` (a PATH value); nothing when there is none.
[[nodiscard]] std::optional<std::vector<std::string>> terminalPrefix(const std::string &searchPath);

} // namespace fernhop::freedesktop
