#pragma once

#include "routing/URLRule.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// The rules as compact UTF-8 JSON: an array of objects with exactly the string members "id", "pattern" and
/// "browserBundleID". Nothing when a field is not valid UTF-8.
[[nodiscard]] std::optional<std::string> encodeURLRules(const std::vector<URLRule> &rules);

/// The rules of such an array, in its order. Members of other names are ignored; anything else that differs,
/// in any element, gives nothing for the whole.
[[nodiscard]] std::optional<std::vector<URLRule>> decodeURLRules(std::string_view json);

} // namespace fernhop
