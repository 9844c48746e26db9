#pragma once

#include "platform/macos/Reference.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::text {

/// A text as a string that preserves every byte: a byte that is not valid UTF-8 becomes a character of the
/// private use area, which equals only itself. Characters of the text in that area are also treated byte by
/// byte.
class ExactString {
  public:
    explicit ExactString(std::string_view text);

    /// The string; valid as long as this object.
    [[nodiscard]] NSString *get() const { return string.get(); }
    /// The index in the string for a byte of the text, or of the next character.
    [[nodiscard]] NSUInteger indexOfByte(std::size_t byte) const;
    /// The byte of the text at which the character with this index begins.
    [[nodiscard]] std::size_t byteOfIndex(NSUInteger index) const { return bytes[index]; }
    [[nodiscard]] NSUInteger length() const { return bytes.size() - 1; }

  private:
    macos::Reference<NSString> string;
    std::vector<std::size_t> bytes; ///< of each character of the string, and the end
};

/// The text of a string that was made from an `ExactString`.
[[nodiscard]] std::string exactText(NSString *string);

} // namespace fernhop::text
