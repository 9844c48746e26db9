#pragma once

#include <cstddef>
#include <string_view>

namespace fernhop::text {

/// How many columns of a terminal `text` takes: two for a wide East Asian character or an emoji, none for a
/// combining mark. `text` is valid UTF-8 without control characters. Implemented where there is a command
/// line.
[[nodiscard]] std::size_t terminalColumns(std::string_view text);

} // namespace fernhop::text
