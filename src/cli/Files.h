#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <variant>

namespace fernhop::cli {

/// Why something could not be read, in words.
struct ReadingFailed {
    std::string reason;
};

/// The whole content of a file or stream. More than 64 MiB is taken for a mistake and not read.
[[nodiscard]] std::variant<std::string, ReadingFailed> readFile(const std::string &path);
[[nodiscard]] std::variant<std::string, ReadingFailed> readStream(std::istream &stream);

/// Writes a file anew; nothing when that worked, else why not, in words.
[[nodiscard]] std::optional<std::string> writeFile(const std::string &path, const std::string &content);

} // namespace fernhop::cli
