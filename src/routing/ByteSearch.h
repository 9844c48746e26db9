#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace fernhop {

/// Where `piece` first occurs in `text`, byte for byte; `npos` when it does not. Takes time in proportion to
/// the two lengths together, whatever they hold.
[[nodiscard]] inline std::size_t findBytes(std::string_view text, std::string_view piece) {
    const void *found = memmem(text.data(), text.size(), piece.data(), piece.size());
    return found ? static_cast<std::size_t>(static_cast<const char *>(found) - text.data())
                 : std::string_view::npos;
}

} // namespace fernhop
