#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <variant>

namespace fernhop::cli {

/// Why something could not be read, for people.
struct ReadingFailed {
    std::string reason;
};

/// The whole content of a file or stream that holds an exported document. What is too large for one is an
/// error, and not read to its end.
[[nodiscard]] std::variant<std::string, ReadingFailed> readFile(const std::string &path);
[[nodiscard]] std::variant<std::string, ReadingFailed> readStream(std::istream &stream);

/// Replaces the content of a file; nothing on success, else the reason for people.
[[nodiscard]] std::optional<std::string> writeFile(const std::string &path, const std::string &content);

} // namespace fernhop::cli
