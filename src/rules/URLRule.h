#pragma once

#include "platform/Url.h"

#include <string>
#include <string_view>

namespace fernhop {

/// Assigns the URLs that a pattern matches to a browser.
struct URLRule {
    std::string id;              ///< stays the same when the rule is edited
    std::string pattern;         ///< a substring, or with "*" a wildcard pattern; stored trimmed
    std::string browserBundleID; ///< the browser that opens matching URLs; not checked when stored

    /// Whether the pattern matches the text of `url`, whose percent escapes are not decoded. A pattern that
    /// is empty when trimmed matches nothing.
    [[nodiscard]] bool matches(const Url &url) const;

    bool operator==(const URLRule &) const = default;
};

} // namespace fernhop
