#include "platform/Text.h"
#include "platform/UnicodeText.h"

#include <unicode/uchar.h>

namespace fernhop::text {

namespace {

bool isWhitespaceOrNewline(char32_t character) {
    if (character < 0x80)
        return character == ' ' || (character >= '\t' && character <= '\r');
    return character == 0x85 || (U_GET_GC_MASK(static_cast<UChar32>(character)) & U_GC_Z_MASK) != 0;
}

/// Whether a byte that begins or ends a text shows at once that nothing is to be trimmed there.
bool isVisibleAscii(char byte) {
    return byte > ' ' && byte < 0x7F;
}

} // namespace

std::string_view trimmed(std::string_view text) {
    if (!text.empty() && isVisibleAscii(text.front()) && isVisibleAscii(text.back()))
        return text;
    while (!text.empty()) {
        const Character first = characterAt(text, 0);
        if (!isWhitespaceOrNewline(first.value))
            break;
        text.remove_prefix(first.length);
    }
    while (!text.empty()) {
        const Character last = lastCharacter(text);
        if (!isWhitespaceOrNewline(last.value))
            break;
        text.remove_suffix(last.length);
    }
    return text;
}

} // namespace fernhop::text
