#include "platform/TerminalWidth.h"

#include "platform/UnicodeText.h"

#include <unicode/uchar.h>

namespace fernhop::text {

namespace {

bool isZeroWidth(UChar32 character) {
    constexpr auto zeroWidthCategories = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK;
    const auto syllable = u_getIntPropertyValue(character, UCHAR_HANGUL_SYLLABLE_TYPE);
    // Medial and final letters of Hangul, and skin tones, merge with the character before them.
    return (U_GET_GC_MASK(character) & zeroWidthCategories) != 0 || syllable == U_HST_VOWEL_JAMO ||
           syllable == U_HST_TRAILING_JAMO || u_hasBinaryProperty(character, UCHAR_EMOJI_MODIFIER);
}

std::size_t columnsOf(UChar32 character) {
    if (isZeroWidth(character))
        return 0;
    const auto width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

} // namespace

std::size_t terminalColumns(std::string_view text) {
    std::size_t columns = 0;
    for (std::size_t position = 0; position < text.size();) {
        const Character character = characterAt(text, position);
        columns += columnsOf(static_cast<UChar32>(character.value));
        position += character.length;
    }
    return columns;
}

} // namespace fernhop::text
