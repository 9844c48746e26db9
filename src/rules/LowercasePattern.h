#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace fernhop {

/// A pattern with its ASCII capital letters in lower case, and what one pass over it shows. It is made for
/// every rule test, so patterns of common length are kept in place.
class LowercasePattern {
  public:
    explicit LowercasePattern(std::string_view pattern);
    LowercasePattern(const LowercasePattern &) = delete;
    LowercasePattern &operator=(const LowercasePattern &) = delete;

    [[nodiscard]] std::string_view text() const { return lowercased; }
    /// Whether `text` is pure ASCII, and with that wholly in lower case.
    [[nodiscard]] bool isAscii() const { return ascii; }
    [[nodiscard]] bool holdsStar() const { return star; }
    /// The position of the first star at or after `from`, which is at most the size of the text; `npos` when
    /// there is none.
    [[nodiscard]] std::size_t starFrom(std::size_t from) const {
        if (from >= starsKnown)
            return lowercased.find('*', from);
        const std::uint64_t later = stars >> from << from;
        if (later != 0)
            return static_cast<std::size_t>(std::countr_zero(later));
        return lowercased.size() > starsKnown ? lowercased.find('*', starsKnown) : std::string_view::npos;
    }

  private:
    static constexpr std::size_t starsKnown = 64;

    std::array<char, 256> near; ///< left as it is until needed
    std::string far;
    std::string_view lowercased;
    bool ascii = true;
    bool star = false;
    std::uint64_t stars = 0; ///< a bit for each of the first positions, the lowest first
};

} // namespace fernhop
