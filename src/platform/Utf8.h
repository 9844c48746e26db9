#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// One character of a text and its length in bytes.
struct Utf8Character {
    char32_t value;
    std::size_t length;
};

/// The first character of `text`; nothing when the text is empty or does not begin with valid UTF-8 (overlong
/// forms, surrogates and values beyond U+10FFFF are invalid).
[[nodiscard]] constexpr std::optional<Utf8Character> firstUtf8Character(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return Utf8Character{lead, 1};
    if (lead < 0xC2 || lead > 0xF4)
        return std::nullopt;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (text.size() < length)
        return std::nullopt;
    char32_t value = lead & (0xFFU >> (length + 1));
    for (const char byte : text.substr(1, length - 1)) {
        const auto bits = static_cast<unsigned char>(byte);
        if ((bits & 0xC0U) != 0x80)
            return std::nullopt;
        value = (value << 6U) | (bits & 0x3FU);
    }
    const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (overlong || surrogate || value > 0x10FFFF)
        return std::nullopt;
    return Utf8Character{value, length};
}

/// Whether all of `text` is valid UTF-8.
[[nodiscard]] constexpr bool isValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        if (!character)
            return false;
        text.remove_prefix(character->length);
    }
    return true;
}

/// `text` with each character replaced by the text that `replacement` returns for it. That is called with the
/// character (`std::optional<Utf8Character>`, nothing for a byte that belongs to no valid one) and its bytes.
template <typename Replacement>
[[nodiscard]] std::string replaceUtf8Characters(std::string_view text, Replacement replacement) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        const auto bytes = text.substr(0, character ? character->length : 1);
        result += replacement(character, bytes);
        text.remove_prefix(bytes.size());
    }
    return result;
}

} // namespace fernhop
