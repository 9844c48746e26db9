#include "rules/ScannedPattern.h"

#include <cstdint>
#include <cstring>

namespace fernhop {

namespace {

/// Eight bytes that are processed at once, none carrying into its neighbour.
using Word = std::uint64_t;

constexpr Word inEachByte(unsigned char byte) {
    return byte * Word{0x0101010101010101};
}
constexpr Word highBits = inEachByte(0x80);

/// The high bit of each byte that is zero, and no other.
constexpr Word zeroBytes(Word word) {
    const Word low = inEachByte(0x7F);
    return ~(((word & low) + low) | word | low);
}

/// The high bits of the eight bytes side by side, that of the byte with the lowest address first.
constexpr Word gathered(Word highBitsOfBytes) {
    if constexpr (std::endian::native == std::endian::little)
        return ((highBitsOfBytes >> 7) * 0x0102040810204080) >> 56;
    else
        return ((highBitsOfBytes >> 7) * 0x8040201008040201) >> 56;
}

constexpr Word lowercasedWord(Word word) {
    const Word low = word & ~highBits;
    const Word fromA = low + inEachByte(0x80 - 'A');
    const Word aboveZ = low + inEachByte(0x7F - 'Z');
    const Word capitals = fromA & ~aboveZ & ~word & highBits;
    return word | capitals >> 2;
}

static_assert(lowercasedWord(0x415A405B617AC1DA) == 0x617A405B617AC1DA);
static_assert(zeroBytes(0x0100FF8000010000) == 0x0080000080008080);

/// What the words of a pattern contain so far.
struct Findings {
    Word characters = 0; ///< all of them, combined by "or"
    Word stars = 0;      ///< a bit for each of the first 64 positions
    Word anyStar = 0;
};

void lowercaseWord(const char *source, char *target, std::size_t position, Findings &found) {
    Word word;
    std::memcpy(&word, source + position, sizeof word);
    const Word starred = zeroBytes(word ^ inEachByte('*'));
    found.characters |= word;
    found.anyStar |= starred;
    found.stars |= position < 64 ? gathered(starred) << position : 0;
    word = lowercasedWord(word);
    std::memcpy(target + position, &word, sizeof word);
}

Findings lowercase(std::string_view pattern, char *target) {
    Findings found;
    const std::size_t size = pattern.size();
    if (size < sizeof(Word)) {
        char word[sizeof(Word)] = {};
        std::memcpy(word, pattern.data(), size);
        lowercaseWord(word, target, 0, found);
        return found;
    }
    // The last word may overlap the one before it.
    for (std::size_t position = 0; position + sizeof(Word) < size; position += sizeof(Word))
        lowercaseWord(pattern.data(), target, position, found);
    lowercaseWord(pattern.data(), target, size - sizeof(Word), found);
    return found;
}

} // namespace

ScannedPattern::ScannedPattern(std::string_view pattern) {
    char *target = inlineText.data();
    if (pattern.size() > inlineText.size()) {
        heapText.resize(pattern.size());
        target = heapText.data();
    }
    const Findings found = lowercase(pattern, target);
    lowercased = {target, pattern.size()};
    ascii = (found.characters & highBits) == 0;
    star = found.anyStar != 0;
    stars = found.stars;
}

} // namespace fernhop
