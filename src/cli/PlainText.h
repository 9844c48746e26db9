#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fernhop::cli {

/// `text` fit for a terminal and for one line: what would move the cursor, change the direction of writing or
/// is no UTF-8 at all is shown as an escape ("\x1b", "\u{202e}").
[[nodiscard]] std::string plain(std::string_view text);

/// How many columns of a terminal `text` takes, which is the result of `plain`: two for a wide East Asian
/// character or an emoji, none for a combining mark.
[[nodiscard]] std::size_t columnsOf(std::string_view text);

} // namespace fernhop::cli
