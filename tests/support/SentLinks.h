#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace fernhop::support {

/// Hostile URLs that make the browser open another host than the text shows: known attacks first, then
/// generated ones, the same for the same count. None holds a zero byte.
[[nodiscard]] std::vector<std::string> misleadingLinks(std::size_t count);

/// The host, with its port, that the URL implementation of Node.js finds in each text; empty where it finds
/// none or takes the text for no URL. Without Node.js an empty list.
[[nodiscard]] std::vector<std::string> hostsByNode(const std::vector<std::string> &texts);

} // namespace fernhop::support
