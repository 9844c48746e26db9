// Stored rules of any bytes, against a second JSON reader.

#include "rules/URLRuleCoding.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using fernhop::URLRule;

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// As many levels as the text can have at most, brackets in strings included.
std::size_t mostLevels(std::string_view text) {
    std::size_t count = 0;
    for (const char character : text)
        count += character == '[' || character == '{';
    return count;
}

std::optional<std::vector<URLRule>> rulesOf(const nlohmann::json &json) {
    if (!json.is_array())
        return std::nullopt;
    std::vector<URLRule> rules;
    for (const nlohmann::json &element : json) {
        for (const char *name : {"id", "pattern", "browserBundleID"})
            if (!element.is_object() || !element.contains(name) || !element[name].is_string())
                return std::nullopt;
        rules.push_back({element["id"], element["pattern"], element["browserBundleID"]});
    }
    return rules;
}

void compareWithSecondReader(std::string_view text, const std::optional<std::vector<URLRule>> &rules) {
    // That reader takes a NUL for the end, has a limit of its own, the size of numbers, and lacks the one of
    // nesting.
    constexpr int numberOutOfRange = 406;
    if (text.find('\0') != std::string_view::npos)
        return require(!rules);
    if (mostLevels(text) > 500)
        return;
    try {
        require(rulesOf(nlohmann::json::parse(text)) == rules);
    } catch (const nlohmann::json::exception &error) {
        require(!rules || error.id == numberOutOfRange);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const auto rules = fernhop::decodeURLRules(text);
    compareWithSecondReader(text, rules);
    if (rules)
        require(fernhop::decodeURLRules(fernhop::encodeURLRules(*rules).value()) == rules);
    return 0;
}
