#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fernhop {

/// The line for a format string without arguments: from left to right, "%%" becomes one percent sign, and any
/// other percent sign stays as written. Control characters, and characters that break lines or change the
/// direction of text, become "\u" and four hexadecimal digits ("\u001B"); bytes that are not valid UTF-8
/// become
/// "\x" and two digits. The result is a single line of valid UTF-8.
[[nodiscard]] std::string logLine(std::string_view format);

/// `line` (valid UTF-8) shortened to at most `most` bytes (64 or more). "[... 123 bytes ...]" replaces its
/// middle, since the end of a line is as informative as its beginning.
[[nodiscard]] std::string shortenedLogLine(std::string_view line, std::size_t most);

} // namespace fernhop
