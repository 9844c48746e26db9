#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// The names under which texts for a locale are looked up, best first: for "sr_YU.UTF-8@Latn" these are
/// "sr_YU@Latn", "sr_YU", "sr@Latn", "sr" (Desktop Entry Specification, "Localized values for keys"). Empty
/// for "C" and "POSIX".
[[nodiscard]] std::vector<std::string> localeNames(std::string_view locale);

/// The same for a list of locales separated by colons, as the variable LANGUAGE has it.
[[nodiscard]] std::vector<std::string> localeNamesOfList(std::string_view locales);

} // namespace fernhop::freedesktop
