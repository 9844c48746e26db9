#include "rules/ByteIndex.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace fernhop {

namespace {

/// With more places than this for every character that was looked at, the text repeats itself and the C
/// library's search, which never goes back, is the better one.
constexpr std::size_t fewPlaces = 16;

std::size_t linearFind(std::string_view text, std::string_view piece, std::size_t from) {
    const void *found = memmem(text.data() + from, text.size() - from, piece.data(), piece.size());
    return found ? static_cast<std::size_t>(static_cast<const char *>(found) - text.data())
                 : std::string_view::npos;
}

} // namespace

ByteIndex::ByteIndex(std::string asciiText) : bytes(std::move(asciiText)), nextPlaces(bytes.size()) {
    firstPlaces.fill(nowhere);
    for (std::size_t place = bytes.size(); place-- > 0;) {
        const auto character = static_cast<unsigned char>(bytes[place]);
        nextPlaces[place] = std::exchange(firstPlaces[character], place);
        counts[character] = static_cast<unsigned char>(std::min(counts[character] + 1, 255));
    }
}

/// The offset in `piece` of a character that is rare in the text: the rarest one of a few.
std::size_t ByteIndex::rareCharacterOf(std::string_view piece) const {
    const std::size_t stride = piece.size() / 8 + 1;
    std::size_t rarest = 0;
    unsigned char lowest = counts[static_cast<unsigned char>(piece[0])];
    for (std::size_t offset = stride; offset < piece.size(); offset += stride) {
        const unsigned char count = counts[static_cast<unsigned char>(piece[offset])];
        if (count < lowest) {
            lowest = count;
            rarest = offset;
        }
    }
    return rarest;
}

std::size_t ByteIndex::find(std::string_view piece, std::size_t from) const {
    if (piece.size() > bytes.size() - from)
        return nowhere;
    if (piece.empty())
        return from;
    const std::size_t offset = rareCharacterOf(piece);
    const auto character = static_cast<unsigned char>(piece[offset]);
    if (counts[character] > fewPlaces)
        return linearFind(bytes, piece, from);
    const std::size_t latest = bytes.size() - piece.size() + offset;
    for (std::size_t place = firstPlaces[character]; place <= latest; place = nextPlaces[place])
        if (place >= from + offset &&
            std::memcmp(bytes.data() + place - offset, piece.data(), piece.size()) == 0)
            return place - offset;
    return nowhere;
}

} // namespace fernhop
