#include "rules/ByteIndex.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace fernhop {

namespace {

/// When even the rarest sampled character occurs more often than this, the text is repetitive, and the C
/// library's linear search is faster.
constexpr std::size_t mostPositions = 16;

std::size_t linearFind(std::string_view text, std::string_view piece, std::size_t from) {
    const void *found = memmem(text.data() + from, text.size() - from, piece.data(), piece.size());
    return found ? static_cast<std::size_t>(static_cast<const char *>(found) - text.data())
                 : std::string_view::npos;
}

} // namespace

ByteIndex::ByteIndex(std::string asciiText) : bytes(std::move(asciiText)), nextPositions(bytes.size()) {
    firstPositions.fill(none);
    for (std::size_t position = bytes.size(); position-- > 0;) {
        const auto character = static_cast<unsigned char>(bytes[position]);
        nextPositions[position] = std::exchange(firstPositions[character], position);
        counts[character] = static_cast<unsigned char>(std::min(counts[character] + 1, 255));
    }
}

/// The offset in `piece` of a character that is rare in the text: the rarest of about eight samples.
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
        return none;
    if (piece.empty())
        return from;
    const std::size_t offset = rareCharacterOf(piece);
    const auto character = static_cast<unsigned char>(piece[offset]);
    if (counts[character] > mostPositions)
        return linearFind(bytes, piece, from);
    const std::size_t latest = bytes.size() - piece.size() + offset;
    for (std::size_t position = firstPositions[character]; position <= latest;
         position = nextPositions[position])
        if (position >= from + offset &&
            std::memcmp(bytes.data() + position - offset, piece.data(), piece.size()) == 0)
            return position - offset;
    return none;
}

} // namespace fernhop
