#pragma once

#include "rules/ByteIndex.h"
#include "rules/LowercasePattern.h"

#include <string_view>

namespace fernhop {

/// Whether a pattern in which each "*" stands for any run of characters, also an empty one, covers `text`
/// from its beginning to its end. No other character is special. Letter case counts; canonically equivalent
/// sequences are equal. Each piece between two stars is found at its leftmost place after the piece before
/// it; the last piece is then asked only to end the text. So a pattern without "*" asks whether the text both
/// begins and ends with it.
[[nodiscard]] bool wildcardMatches(std::string_view text, std::string_view pattern);

/// The same for any text: the definition, by the platform's knowledge of Unicode.
[[nodiscard]] bool unicodeWildcardMatches(std::string_view text, std::string_view pattern);

/// The same, many times faster, where both are ASCII.
[[nodiscard]] bool asciiWildcardMatches(const ByteIndex &text, std::string_view pattern);
[[nodiscard]] bool asciiWildcardMatches(const ByteIndex &text, const LowercasePattern &pattern);

} // namespace fernhop
