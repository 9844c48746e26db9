#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// An ASCII text with an index of the positions of each character, for searching it many times: a search
/// looks only at the positions of the searched piece's rarest character.
class ByteIndex {
  public:
    /// `asciiText` must be pure ASCII.
    explicit ByteIndex(std::string asciiText);

    [[nodiscard]] std::string_view text() const { return bytes; }

    /// The position of the first occurrence of the ASCII text `piece` at or after `from` (at most the text's
    /// size); `npos` when there is none. Takes at most linear time in the two lengths.
    [[nodiscard]] std::size_t find(std::string_view piece, std::size_t from = 0) const;

  private:
    static constexpr std::size_t none = std::string_view::npos;

    [[nodiscard]] std::size_t rareCharacterOf(std::string_view piece) const;

    std::string bytes;
    std::array<unsigned char, 0x80> counts{};     ///< of each character, 255 when there are more
    std::array<std::size_t, 0x80> firstPositions; ///< of each character
    std::vector<std::size_t> nextPositions;       ///< for each position, the next one with the same character
};

} // namespace fernhop
