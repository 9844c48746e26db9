#include "platform/linux/text/UnicodeText.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>

namespace fernhop::text {

namespace {

constexpr char32_t invalidByte = 0xDC00;

bool standsForInvalidByte(UChar32 character) {
    return character >= static_cast<UChar32>(invalidByte + 0x80) &&
           character <= static_cast<UChar32>(invalidByte + 0xFF);
}

} // namespace

Character characterAt(std::string_view text, std::size_t position) {
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(text.data()) + position;
    const auto available = static_cast<int>(std::min<std::size_t>(text.size() - position, U8_MAX_LENGTH));
    int length = 0;
    UChar32 value = 0;
    U8_NEXT(bytes, length, available, value);
    if (value < 0)
        return {invalidByte + *bytes, 1};
    return {static_cast<char32_t>(value), static_cast<std::size_t>(length)};
}

Character lastCharacter(std::string_view text) {
    const std::size_t longest = std::min<std::size_t>(text.size(), U8_MAX_LENGTH);
    for (std::size_t length = longest; length > 1; --length) {
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
        if (U_IS_SUPPLEMENTARY(character.value)) {
            result += static_cast<char16_t>(U16_LEAD(character.value));
            result += static_cast<char16_t>(U16_TRAIL(character.value));
        } else {
            result += static_cast<char16_t>(character.value);
        }
        position += character.length;
    }
    return result;
}

std::string toUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        UChar32 character = 0;
        U16_NEXT(text.data(), position, text.size(), character);
        if (standsForInvalidByte(character)) {
            result += static_cast<char>(character & 0xFF);
            continue;
        }
        char bytes[U8_MAX_LENGTH];
        std::size_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, character);
        result.append(bytes, length);
    }
    return result;
}

} // namespace fernhop::text
