#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// An ASCII text that remembers where each of its characters stands, so that many pieces can be searched in
/// it quickly: a search looks only at the places of the piece's rarest character.
class ByteIndex {
  public:
    /// `asciiText` must be pure ASCII.
    explicit ByteIndex(std::string asciiText);

    [[nodiscard]] std::string_view text() const { return bytes; }

    /// Where the ASCII text `piece` first occurs at or after `from`, which does not lie beyond the text's
    /// end; `npos` when it does not. Takes time in proportion to the two lengths at most.
    [[nodiscard]] std::size_t find(std::string_view piece, std::size_t from = 0) const;

  private:
    static constexpr std::size_t nowhere = std::string_view::npos;

    [[nodiscard]] std::size_t rareCharacterOf(std::string_view piece) const;

    std::string bytes;
    std::array<unsigned char, 0x80> counts{}; ///< of each character, 255 when there are more
    std::array<std::size_t, 0x80> firstPlaces;
    std::vector<std::size_t> nextPlaces; ///< of each place, the next one of the same character
};

} // namespace fernhop
