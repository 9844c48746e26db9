#pragma once

#include <string>
#include <string_view>

/// Text operations without Unicode knowledge, for the usual case of URLs, identifiers and patterns that are
/// pure ASCII.
namespace fernhop::ascii {

/// Whether every byte is an ASCII character.
[[nodiscard]] inline bool isAscii(std::string_view text) {
    unsigned char seen = 0;
    for (const char character : text)
        seen = static_cast<unsigned char>(seen | static_cast<unsigned char>(character));
    return seen < 0x80;
}

/// An ASCII capital letter in lower case; any other byte unchanged.
[[nodiscard]] constexpr char lowercased(char character) {
    const auto fromA = static_cast<unsigned char>(character - 'A');
    return static_cast<char>(character | (fromA < 26 ? 0x20 : 0));
}

/// `text` with the ASCII capital letters in lower case.
[[nodiscard]] inline std::string lowercased(std::string_view text) {
    std::string result(text);
    for (char &character : result)
        character = lowercased(character);
    return result;
}

/// Whether `character` is one of "0" to "9".
[[nodiscard]] constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Whether `character` is an ASCII letter.
[[nodiscard]] constexpr bool isLetter(char character) {
    const char small = lowercased(character);
    return small >= 'a' && small <= 'z';
}

} // namespace fernhop::ascii
