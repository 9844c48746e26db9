#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fernhop::text {

/// One character of a UTF-8 text and its length in bytes.
struct Character {
    char32_t value;     ///< the code point; for an invalid byte, 0xDC00 plus the byte
    std::size_t length; ///< in bytes, 1 to 4

    [[nodiscard]] bool operator==(const Character &) const = default;
};

/// The character at byte `position`, which is inside `text`. A byte that does not begin a valid UTF-8
/// sequence is a character of its own, represented by a lone surrogate, which no valid text contains.
[[nodiscard]] Character characterAt(std::string_view text, std::size_t position);

/// The last character of `text`, which is not empty.
[[nodiscard]] Character lastCharacter(std::string_view text);

/// `text` as UTF-16 for the platforms' libraries. Invalid bytes become lone surrogates, which the libraries
/// preserve.
[[nodiscard]] std::u16string toUtf16(std::string_view text);

/// The inverse of `toUtf16`: lone surrogates become the invalid bytes that they represent. Others, which
/// `toUtf16` never produces, become U+FFFD.
[[nodiscard]] std::string toUtf8(std::u16string_view text);

/// `text` with U+FFFD in place of each lone surrogate, for display and storage.
[[nodiscard]] std::u16string withoutLoneSurrogates(std::u16string text);

} // namespace fernhop::text
