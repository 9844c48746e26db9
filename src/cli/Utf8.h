#pragma once

#include <cstddef>
#include <string_view>

namespace fernhop::cli {

/// One step through a text.
struct Utf8Step {
    char32_t character; ///< meaningless when `valid` is false
    std::size_t length; ///< bytes taken, at least 1
    bool valid;
};

/// The character at the beginning of `text`, which is not empty. Overlong forms, surrogates and cut sequences
/// are not valid; of those one byte is taken.
[[nodiscard]] Utf8Step firstCharacter(std::string_view text);

} // namespace fernhop::cli
