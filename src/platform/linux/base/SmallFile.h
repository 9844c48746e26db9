#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// Far above any real desktop entry (LibreOffice's, in all its languages, has about 60 KiB).
inline constexpr std::size_t largestSmallFile = std::size_t{1} << 20;

/// The contents of an ordinary file of at most `largest` bytes; nothing for any other file (a pipe is never
/// waited for), or when it cannot be read.
[[nodiscard]] std::optional<std::string> readSmallFile(const std::string &path,
                                                       std::size_t largest = largestSmallFile);

} // namespace fernhop::freedesktop
