#pragma once

#include "rules/URLRule.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// The rules as compact UTF-8 JSON: an array of objects with exactly the string members "id", "pattern" and
/// "browserBundleID". Nothing when a field is not valid UTF-8.
[[nodiscard]] std::optional<std::string> encodeURLRules(const std::vector<URLRule> &rules);

/// A rule as it is read; the texts are valid only during the visit.
struct URLRuleView {
    std::string_view id;
    std::string_view pattern;
    std::string_view browserBundleID;
};

/// Reads such an array without storing it: passes each rule to `visit`, in order, until `visit` returns
/// false, and validates the rest all the same. False when the text is not such an array; the caller must then
/// discard what it has visited.
[[nodiscard]] bool visitURLRules(std::string_view json,
                                 const std::function<bool(const URLRuleView &)> &visit);

/// The rules of such an array, in its order. Members with other names are ignored; any other deviation, in
/// any element, gives nothing at all.
[[nodiscard]] std::optional<std::vector<URLRule>> decodeURLRules(std::string_view json);

} // namespace fernhop
