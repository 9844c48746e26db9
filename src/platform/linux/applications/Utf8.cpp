#include "platform/linux/applications/Utf8.h"

#include <cstddef>

namespace fernhop::freedesktop {

namespace {

using Byte = unsigned char;

bool isBetween(Byte byte, Byte low, Byte high) {
    return byte >= low && byte <= high;
}

/// The length of the sequence that `lead` begins; 0 when it begins none.
std::size_t sequenceLength(Byte lead) {
    if (lead < 0x80)
        return 1;
    if (isBetween(lead, 0xC2, 0xDF))
        return 2;
    if (isBetween(lead, 0xE0, 0xEF))
        return 3;
    return isBetween(lead, 0xF0, 0xF4) ? 4 : 0;
}

/// The second byte has a narrower range behind some leads.
bool isSecondByte(Byte lead, Byte second) {
    switch (lead) {
    case 0xE0:
        return isBetween(second, 0xA0, 0xBF);
    case 0xED:
        return isBetween(second, 0x80, 0x9F);
    case 0xF0:
        return isBetween(second, 0x90, 0xBF);
    case 0xF4:
        return isBetween(second, 0x80, 0x8F);
    default:
        return isBetween(second, 0x80, 0xBF);
    }
}

/// The length of the well-formed character at the start of `text` (not empty); 0 when there is none.
std::size_t characterLength(std::string_view text) {
    const auto byteAt = [&](std::size_t i) { return static_cast<Byte>(text[i]); };
    const std::size_t length = sequenceLength(byteAt(0));
    if (length > text.size() || (length > 1 && !isSecondByte(byteAt(0), byteAt(1))))
        return 0;
    for (std::size_t i = 2; i < length; ++i) {
        if (!isBetween(byteAt(i), 0x80, 0xBF))
            return 0;
    }
    return length;
}

} // namespace

bool isValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto length = characterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string validUtf8(std::string_view text) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const auto length = characterLength(text);
        valid += length == 0 ? replacement : text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return valid;
}

} // namespace fernhop::freedesktop
