#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// The text to deliver for a link that somebody sent: without what the URL Standard, by which browsers read
/// links, removes from every URL (control characters and spaces around it, tabs and line ends in it), and in
/// http and https links with "/" for each "\" before the query. A valid URI stays as it is. Nothing when a
/// browser would find another host in the link once `Url::parse` has encoded it; such a link is not to be
/// delivered. Accepts any bytes; any thread.
[[nodiscard]] std::optional<std::string> linkToDeliver(std::string_view sent);

/// Why a link is refused, for people.
inline constexpr std::string_view refusedLink = "a browser would find another host in it once it is encoded";

} // namespace fernhop
