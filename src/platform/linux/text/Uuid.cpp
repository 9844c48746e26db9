#include "platform/Text.h"

#include <unistd.h>

#include <array>
#include <random>

namespace fernhop::text {

namespace {

using UuidBytes = std::array<unsigned char, 16>;

UuidBytes randomBytes() {
    UuidBytes bytes{};
    if (getentropy(bytes.data(), bytes.size()) != 0) {
        std::random_device device;
        for (unsigned char &byte : bytes)
            byte = static_cast<unsigned char>(device());
    }
    return bytes;
}

} // namespace

std::string makeUuid() {
    UuidBytes bytes = randomBytes();
    // RFC 4122: version 4 in the seventh byte, the variant in the ninth.
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);

    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    result.reserve(36);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10)
            result += '-';
        result += digits[bytes[index] >> 4];
        result += digits[bytes[index] & 0x0F];
    }
    return result;
}

} // namespace fernhop::text
