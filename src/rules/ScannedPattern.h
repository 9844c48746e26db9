#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace fernhop {

/// A pattern with its ASCII capital letters in lower case, and what the same pass found out about it. One is
/// made for every rule test, so a pattern of usual length needs no memory from the heap.
class ScannedPattern {
  public:
    explicit ScannedPattern(std::string_view pattern);
    ScannedPattern(const ScannedPattern &) = delete;
    ScannedPattern &operator=(const ScannedPattern &) = delete;

    [[nodiscard]] std::string_view text() const { return lowercased; }
    /// Whether `text` is pure ASCII, and therefore entirely in lower case.
    [[nodiscard]] bool isAscii() const { return ascii; }
    [[nodiscard]] bool hasStar() const { return star; }
    /// The position of the first star at or after `from`, which is at most the size of the text; `npos` when
    /// there is none.
    [[nodiscard]] std::size_t starFrom(std::size_t from) const {
        if (from >= mappedPositions)
            return lowercased.find('*', from);
        const std::uint64_t later = stars >> from << from;
        if (later != 0)
            return static_cast<std::size_t>(std::countr_zero(later));
        return lowercased.size() > mappedPositions ? lowercased.find('*', mappedPositions)
                                                   : std::string_view::npos;
    }

  private:
    static constexpr std::size_t mappedPositions = 64;

    std::array<char, 256> inlineText; ///< holds patterns of usual length; otherwise uninitialised
    std::string heapText;             ///< holds longer ones
    std::string_view lowercased;
    bool ascii = true;
    bool star = false;
    std::uint64_t stars = 0; ///< a bit for each of the first positions, the lowest bit first
};

} // namespace fernhop
