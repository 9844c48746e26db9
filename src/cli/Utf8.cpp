#include "cli/Utf8.h"

#include <array>

namespace fernhop::cli {

namespace {

std::size_t lengthFromLeadByte(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool isScalarOfLength(char32_t character, std::size_t length) {
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    return character >= smallest.at(length) && character < 0x110000 && !surrogate;
}

} // namespace

Utf8Step firstCharacter(std::string_view text) {
    constexpr std::array<unsigned, 5> leadBits{0, 0x7F, 0x1F, 0x0F, 0x07};
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const std::size_t length = lengthFromLeadByte(byteAt(0));
    if (length == 0 || length > text.size())
        return {0, 1, false};
    char32_t character = byteAt(0) & leadBits.at(length);
    for (std::size_t index = 1; index < length; ++index) {
        if ((byteAt(index) & 0xC0U) != 0x80U)
            return {0, 1, false};
        character = (character << 6U) | (byteAt(index) & 0x3FU);
    }
    if (!isScalarOfLength(character, length))
        return {0, 1, false};
    return {character, length, true};
}

} // namespace fernhop::cli
