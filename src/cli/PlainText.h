#pragma once

#include <string>
#include <string_view>

namespace fernhop::cli {

/// `text` made safe for a terminal, on one line: characters that move the cursor or change the direction of
/// writing, and bytes that are not valid UTF-8, become escapes ("\x1b", "\u{202e}").
[[nodiscard]] std::string plain(std::string_view text);

} // namespace fernhop::cli
