#include "rules/URLRuleCoding.h"

#include <nlohmann/json.hpp>

namespace fernhop {

std::optional<std::string> encodeURLRules(const std::vector<URLRule> &rules) {
    auto array = nlohmann::ordered_json::array();
    for (const URLRule &rule : rules)
        array.push_back(
            {{"id", rule.id}, {"pattern", rule.pattern}, {"browserBundleID", rule.browserBundleID}});
    try {
        return array.dump();
    } catch (const nlohmann::json::exception &) {
        return std::nullopt; // a field is not valid UTF-8
    }
}

} // namespace fernhop
