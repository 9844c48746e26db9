#pragma once

#include "platform/Url.h"

#include <string>
#include <string_view>

namespace fernhop {

/// Maps the URLs that a pattern matches to a browser.
struct URLRule {
    std::string id;              ///< identity: never changes, also when the rule is edited
    std::string pattern;         ///< a substring, or with "*" a wildcard pattern; stored trimmed
    std::string browserBundleID; ///< the browser that opens matching URLs; not checked when stored

    /// Whether the rule applies to `url`. Its text is taken as it stands, percent escapes included. A rule
    /// whose trimmed pattern is empty applies to nothing.
    [[nodiscard]] bool matches(const Url &url) const;

    bool operator==(const URLRule &) const = default;
};

} // namespace fernhop
