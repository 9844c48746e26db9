#include "platform/macos/text/ExactString.h"

#include "platform/UnicodeText.h"

#include <algorithm>

namespace fernhop::text {

namespace {

/// The bytes 0x80 to 0xFF are mapped to the end of the last private use area, before its noncharacters.
constexpr char32_t firstByte = 0x10FE80;
constexpr char32_t lastByte = 0x10FEFF;
/// The lone surrogate that represents the byte 0x80 in `toUtf8`.
constexpr char32_t firstLoneSurrogate = 0xDC80;
constexpr char32_t lastLoneSurrogate = 0xDCFF;

bool isBetween(char32_t value, char32_t first, char32_t last) {
    return value >= first && value <= last;
}

void append(std::u16string &units, char32_t value) {
    if (value < 0x10000) {
        units += static_cast<char16_t>(value);
        return;
    }
    units += static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10));
    units += static_cast<char16_t>(0xDC00 + ((value - 0x10000) & 0x3FF));
}

char32_t standingFor(char byte) {
    return firstByte + (static_cast<unsigned char>(byte) - 0x80U);
}

} // namespace

ExactString::ExactString(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    bytes.reserve(text.size() + 1);
    for (std::size_t position = 0; position < text.size();) {
        const Character character = characterAt(text, position);
        const bool byByte = isBetween(character.value, firstLoneSurrogate, lastLoneSurrogate) ||
                            isBetween(character.value, firstByte, lastByte);
        append(units, byByte ? standingFor(text[position]) : character.value);
        bytes.resize(units.size(), position);
        position += byByte ? 1 : character.length;
    }
    bytes.push_back(text.size());
    @autoreleasepool {
        string = macos::Reference<NSString>([NSString
            stringWithCharacters:reinterpret_cast<const unichar *>(units.data())
                          length:units.size()]);
    }
}

NSUInteger ExactString::indexOfByte(std::size_t byte) const {
    const auto found = std::ranges::lower_bound(bytes, byte);
    return static_cast<NSUInteger>(std::min(found, bytes.end() - 1) - bytes.begin());
}

std::string exactText(NSString *string) {
    std::u16string units([string length], u'\0');
    [string getCharacters:reinterpret_cast<unichar *>(units.data()) range:NSMakeRange(0, units.size())];
    // All these characters have the same high surrogate.
    constexpr char16_t high = 0xD800 + ((firstByte - 0x10000) >> 10);
    std::u16string result;
    result.reserve(units.size());
    for (std::size_t position = 0; position < units.size(); ++position) {
        const char32_t low = position + 1 < units.size() ? units[position + 1] : 0;
        const char32_t value = 0x10000 + ((high - char32_t{0xD800}) << 10) + (low - 0xDC00);
        if (units[position] == high && isBetween(value, firstByte, lastByte)) {
            result += static_cast<char16_t>(value - firstByte + firstLoneSurrogate);
            ++position;
        } else {
            result += units[position];
        }
    }
    return toUtf8(result);
}

} // namespace fernhop::text
