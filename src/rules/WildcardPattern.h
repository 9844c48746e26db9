#pragma once

#include "rules/ByteIndex.h"
#include "rules/ScannedPattern.h"

#include <string_view>

namespace fernhop {

/// Whether a pattern in which each "*" stands for any run of characters, also an empty one, covers `text`
/// from its beginning to its end. No other character is special. Letter case counts; canonically equivalent
/// sequences are equal. Each piece between two stars is found at its leftmost place after the piece before
/// it; the last piece only has to end the text. So a pattern without "*" matches a text that both begins and
/// ends with it.
[[nodiscard]] bool unicodeWildcardMatches(std::string_view text, std::string_view pattern);

/// The same result many times faster, for a text and a pattern that are both pure ASCII.
[[nodiscard]] bool asciiWildcardMatches(const ByteIndex &text, const ScannedPattern &pattern);

} // namespace fernhop
