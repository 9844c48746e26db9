#pragma once

#include <cstddef>
#include <string>

namespace fernhop::freedesktop {

/// A link that was not opened.
struct UnopenedLink {
    std::size_t index;  ///< among the links of its delivery, from 0
    std::string reason; ///< in words, for people; empty: not told

    bool operator==(const UnopenedLink &) const = default;
};

/// "link" was not opened: reason.
[[nodiscard]] inline std::string unopenedSentence(const std::string &link, const std::string &reason) {
    return '"' + link + "\" was not opened" + (reason.empty() ? "" : ": ") + reason + '.';
}

} // namespace fernhop::freedesktop
