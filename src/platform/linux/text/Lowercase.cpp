#include "platform/Ascii.h"
#include "platform/Text.h"
#include "platform/UnicodeText.h"

#include <unicode/ustring.h>

namespace fernhop::text {

std::string lowercased(std::string_view text) {
    if (ascii::isAscii(text))
        return ascii::lowercased(text);

    // A character grows to three UTF-16 units at most.
    const std::u16string source = toUtf16(text);
    std::u16string lower(source.size() * 3, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = u_strToLower(lower.data(), static_cast<int32_t>(lower.size()), source.data(),
                                        static_cast<int32_t>(source.size()), "", &status);
    if (U_FAILURE(status))
        return std::string(text);
    return toUtf8(std::u16string_view(lower).substr(0, static_cast<std::size_t>(length)));
}

} // namespace fernhop::text
