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

/// A rule as it is read: the texts live only during the visit.
struct URLRuleView {
    std::string_view id;
    std::string_view pattern;
    std::string_view browserBundleID;
};

/// Reads such an array without keeping it: hands each rule to `visit`, in order, until that answers false,
/// and checks the others all the same. False when the whole is no such array; what was visited before does
/// not count then.
[[nodiscard]] bool visitURLRules(std::string_view json,
                                 const std::function<bool(const URLRuleView &)> &visit);

/// The rules of such an array, in its order. Members of other names are ignored; anything else that differs,
/// in any element, gives nothing for the whole.
[[nodiscard]] std::optional<std::vector<URLRule>> decodeURLRules(std::string_view json);

} // namespace fernhop
