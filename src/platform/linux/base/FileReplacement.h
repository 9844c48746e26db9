#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace fernhop::freedesktop {

/// Makes a folder, and those above it, for this user alone. No error when it is there.
[[nodiscard]] std::error_code makeFolder(const std::filesystem::path &folder);

/// Puts a new file with these bytes in the place of `file`, on the disk before it returns. Whatever happens,
/// the path leads either to the old file or to the whole new one. Only one caller at a time: the new file is
/// built under a fixed name (".new" behind the file's), so that one which a killed process left behind is
/// replaced by the next.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path &file, std::string_view bytes);

} // namespace fernhop::freedesktop
