#include "cli/PlainText.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace fernhop::cli {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Control characters, line and paragraph separators, and characters that reorder or hide text (Unicode
// categories Cc, Zl, Zp and part of Cf).
constexpr Range unprintable[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},
    {0x180E, 0x180E}, {0x200B, 0x200C}, {0x200E, 0x200F}, {0x2028, 0x202E},
    {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE0FFF},
};

bool isUnprintable(char32_t character) {
    return std::ranges::any_of(unprintable, [character](const Range &range) {
        return character >= range.first && character <= range.last;
    });
}

std::string escapedByte(char byte) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "\\x%02x",
                  static_cast<unsigned>(static_cast<unsigned char>(byte)));
    return text.data();
}

std::string escapedCharacter(char32_t character) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "\\u{%x}", static_cast<unsigned>(character));
    return text.data();
}

/// The bytes of a character as they are shown; no character means that the first byte is not valid UTF-8.
std::string shown(const std::optional<Utf8Character> &character, std::string_view bytes) {
    if (!character || (character->length == 1 && isUnprintable(character->value)))
        return escapedByte(bytes.front());
    if (isUnprintable(character->value))
        return escapedCharacter(character->value);
    return std::string(bytes);
}

} // namespace

std::string plain(std::string_view text) {
    return replaceUtf8Characters(text, shown);
}

} // namespace fernhop::cli
