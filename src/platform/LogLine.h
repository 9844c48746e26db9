#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fernhop {

/// The line that a format string without arguments stands for: "%%" is one percent sign, read from left to
/// right, and any other percent sign stands as written, with what follows it. Control characters, and those
/// that break lines or turn the direction of text, become "\u" and four hexadecimal digits ("\u001B"); bytes
/// that are no UTF-8 become "\x" and two. The result is valid UTF-8 and one line.
[[nodiscard]] std::string logLine(std::string_view format);

/// `line` (valid UTF-8) in at most `most` bytes (64 or more). What has to go is taken out of the middle,
/// since the end of a line says as much as its beginning, and "[... 123 bytes ...]" stands in its place.
[[nodiscard]] std::string shortenedLogLine(std::string_view line, std::size_t most);

} // namespace fernhop
