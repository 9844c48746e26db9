#include "platform/UnicodeText.h"

#include "platform/Utf8.h"

#include <algorithm>

namespace fernhop::text {

namespace {

constexpr char32_t invalidByte = 0xDC00;
constexpr char16_t replacement = 0xFFFD;
constexpr std::size_t longestSequence = 4;

bool isHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

bool isPair(std::u16string_view text, std::size_t position) {
    return isHighSurrogate(text[position]) && position + 1 < text.size() &&
           isLowSurrogate(text[position + 1]);
}

bool standsForInvalidByte(char16_t unit) {
    return unit >= invalidByte + 0x80 && unit <= invalidByte + 0xFF;
}

char continuation(char32_t value, int shift) {
    return static_cast<char>(0x80 | ((value >> shift) & 0x3F));
}

void append(std::string &result, char32_t value) {
    if (value < 0x80) {
        result += static_cast<char>(value);
    } else if (value < 0x800) {
        result += {static_cast<char>(0xC0 | (value >> 6)), continuation(value, 0)};
    } else if (value < 0x10000) {
        result += {static_cast<char>(0xE0 | (value >> 12)), continuation(value, 6), continuation(value, 0)};
    } else {
        result += {static_cast<char>(0xF0 | (value >> 18)), continuation(value, 12), continuation(value, 6),
                   continuation(value, 0)};
    }
}

} // namespace

Character characterAt(std::string_view text, std::size_t position) {
    const auto character = firstUtf8Character(text.substr(position));
    if (!character)
        return {invalidByte + static_cast<unsigned char>(text[position]), 1};
    return {character->value, character->length};
}

Character lastCharacter(std::string_view text) {
    for (std::size_t length = std::min(text.size(), longestSequence); length > 1; --length) {
        const Character character = characterAt(text, text.size() - length);
        if (character.length == length)
            return character;
    }
    return characterAt(text, text.size() - 1);
}

std::u16string toUtf16(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const Character character = characterAt(text, position);
        if (character.value < 0x10000) {
            result += static_cast<char16_t>(character.value);
        } else {
            const char32_t offset = character.value - 0x10000;
            result += static_cast<char16_t>(0xD800 + (offset >> 10));
            result += static_cast<char16_t>(0xDC00 + (offset & 0x3FF));
        }
        position += character.length;
    }
    return result;
}

std::string toUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char16_t unit = text[position];
        if (isPair(text, position))
            append(result,
                   0x10000 + ((unit - char32_t{0xD800}) << 10) + (text[++position] - char32_t{0xDC00}));
        else if (standsForInvalidByte(unit))
            result += static_cast<char>(unit & 0xFF);
        else
            append(result, isHighSurrogate(unit) || isLowSurrogate(unit) ? replacement : unit);
    }
    return result;
}

std::u16string withoutLoneSurrogates(std::u16string text) {
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (isPair(text, position))
            ++position;
        else if (isHighSurrogate(text[position]) || isLowSurrogate(text[position]))
            text[position] = replacement;
    }
    return text;
}

} // namespace fernhop::text
