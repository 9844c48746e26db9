#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fernhop::text {

/// One character of a UTF-8 text and the number of bytes that spell it.
struct Character {
    char32_t value;     ///< the code point; of an invalid byte, 0xDC00 plus the byte
    std::size_t length; ///< in bytes, 1 to 4

    [[nodiscard]] bool operator==(const Character &) const = default;
};

/// The character at byte `position`, which lies inside `text`. A byte that begins no valid UTF-8 sequence is
/// a character of its own, written as a lone surrogate, which no valid text can hold.
[[nodiscard]] Character characterAt(std::string_view text, std::size_t position);

/// The last character of `text`, which is not empty.
[[nodiscard]] Character lastCharacter(std::string_view text);

/// `text` as the libraries of the platforms take it. Invalid bytes become lone surrogates, which they leave
/// alone.
[[nodiscard]] std::u16string toUtf16(std::string_view text);

/// The inverse of `toUtf16`: lone surrogates become the invalid bytes that they stand for. Others, which it
/// never gives, become U+FFFD.
[[nodiscard]] std::string toUtf8(std::u16string_view text);

/// `text` with U+FFFD in the place of each lone surrogate: fit to be shown and stored.
[[nodiscard]] std::u16string withoutLoneSurrogates(std::u16string text);

} // namespace fernhop::text
