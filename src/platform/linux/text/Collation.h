#pragma once

#include <compare>
#include <optional>
#include <string_view>

namespace fernhop::text {

/// Whether the locale sorts ASCII text in the root order of the Unicode Collation Algorithm's CLDR table,
/// that is, whether `asciiOrder` knows its order.
[[nodiscard]] bool sortsAsciiInRootOrder(std::string_view localeName);

/// The root order of two texts, letter case ignored, as far as their ASCII characters decide it: nothing when
/// a collator must be asked.
[[nodiscard]] std::optional<std::weak_ordering> asciiOrder(std::string_view left, std::string_view right);

} // namespace fernhop::text
