#pragma once

#include <string>
#include <string_view>

namespace fernhop::freedesktop {

/// Whether `text` is well-formed UTF-8 (Unicode, table 3-7: no overlong form, no surrogate).
[[nodiscard]] bool isValidUtf8(std::string_view text);

/// `text` with each byte that is no part of a well-formed character replaced by U+FFFD.
[[nodiscard]] std::string validUtf8(std::string_view text);

} // namespace fernhop::freedesktop
