#pragma once

#include <string>
#include <string_view>

namespace fernhop::freedesktop {

/// A text as the bus takes it and one line of a menu shows it: what is not UTF-8 becomes U+FFFD, control
/// characters and line separators become spaces, and what no screen is wide enough for is cut with an
/// ellipsis.
[[nodiscard]] std::string shownText(std::string_view text);

/// A title as a com.canonical.dbusmenu label: hosts take a single underscore for the mark of an access key
/// and drop it, so each is doubled. Everything else, '&' included, shows as it is.
[[nodiscard]] std::string menuLabel(std::string_view title);

} // namespace fernhop::freedesktop
