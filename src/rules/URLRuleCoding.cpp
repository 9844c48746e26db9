#include "rules/URLRuleCoding.h"

#include "platform/Ascii.h"

#include <nlohmann/json.hpp>
#include <simdjson.h>

#include <algorithm>
#include <array>
#include <bitset>

namespace fernhop {

namespace {

namespace json = simdjson::ondemand;

constexpr int deepestNesting = 512;
/// A rule's members lie in an object that lies in the array of rules.
constexpr int levelOfMembers = 3;

/// Whether a value that nobody reads is well formed, down to its last part; the value is consumed. simdjson
/// skips such values without checking them, so text that is not JSON would otherwise be accepted as rules.
/// Numbers may have any size. Values nested deeper than 512 levels are refused, as the platforms' own JSON
/// readers do.
bool isWellFormedAt(int depth, json::value value);

/// Removes the digits at the front of `text`; false when there are none.
bool takeDigits(std::string_view &text) {
    const std::size_t before = text.size();
    while (!text.empty() && ascii::isDigit(text.front()))
        text.remove_prefix(1);
    return text.size() < before;
}

/// Removes the first character of `text` when it is one of `characters`; false when it is not.
bool takeOneOf(std::string_view characters, std::string_view &text) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
}

/// Whether `text` is a number by RFC 8259, section 6.
bool isNumber(std::string_view text) {
    takeOneOf("-", text);
    if (!takeOneOf("0", text) && !takeDigits(text))
        return false;
    if (takeOneOf(".", text) && !takeDigits(text))
        return false;
    if (takeOneOf("eE", text)) {
        takeOneOf("+-", text);
        if (!takeDigits(text))
            return false;
    }
    return text.empty();
}

bool isWellFormedScalar(json::value value) {
    std::string_view token = value.raw_json_token();
    const auto last = token.find_last_not_of(" \t\n\r");
    token = token.substr(0, last == std::string_view::npos ? 0 : last + 1);
    return token == "true" || token == "false" || token == "null" || isNumber(token);
}

bool isWellFormedArray(int depth, json::value value) {
    json::array array;
    if (value.get_array().get(array))
        return false;
    for (auto element : array) {
        json::value inner;
        if (element.get(inner) || !isWellFormedAt(depth + 1, inner))
            return false;
    }
    return true;
}

bool isWellFormedObject(int depth, json::value value) {
    json::object object;
    if (value.get_object().get(object))
        return false;
    for (auto element : object) {
        json::field field;
        std::string_view key;
        if (std::move(element).get(field) || field.unescaped_key().get(key) ||
            !isWellFormedAt(depth + 1, field.value()))
            return false;
    }
    return true;
}

bool isWellFormedAt(int depth, json::value value) {
    json::json_type type;
    if (depth > deepestNesting || value.type().get(type))
        return false;
    switch (type) {
    case json::json_type::array:
        return isWellFormedArray(depth, value);
    case json::json_type::object:
        return isWellFormedObject(depth, value);
    case json::json_type::string:
        return value.get_string().error() == simdjson::SUCCESS;
    default:
        return isWellFormedScalar(value);
    }
}

/// The usual length of a rule in JSON, with its identifier of 36 characters and the names of its members.
constexpr std::size_t usualRuleSize = 120;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// A member of a rule by its name in JSON.
struct Member {
    std::string_view name;
    std::string_view URLRuleView::*field;
};
constexpr std::array<Member, 3> members{{{"id", &URLRuleView::id},
                                         {"pattern", &URLRuleView::pattern},
                                         {"browserBundleID", &URLRuleView::browserBundleID}}};

/// Which of `members` a rule has with a string as value.
using Present = std::bitset<members.size()>;

/// The member's index in `members`; `members.size()` for any other name; nothing when the name is not JSON.
std::optional<std::size_t> memberIndex(json::field &field) {
    const auto named = [](auto equals) {
        return static_cast<std::size_t>(std::ranges::find_if(members, equals, &Member::name) -
                                        members.begin());
    };
    // A name without escapes, the usual case, need not be copied.
    const json::raw_json_string raw = field.key();
    const std::size_t index = named([&raw](std::string_view name) { return raw.unsafe_is_equal(name); });
    if (index < members.size())
        return index;
    std::string_view unescaped;
    if (field.unescaped_key().get(unescaped))
        return std::nullopt;
    return named([unescaped](std::string_view name) { return name == unescaped; });
}

/// Reads one member into the rule's field. False when the text is not JSON; a value of another type leaves
/// the member absent. Of two members with the same name the later one counts.
bool readMember(json::field field, URLRuleView &rule, Present &present) {
    const auto index = memberIndex(field);
    json::json_type type;
    if (!index || field.value().type().get(type))
        return false;
    if (*index < members.size())
        present[*index] = type == json::json_type::string;
    if (*index == members.size() || type != json::json_type::string)
        return isWellFormedAt(levelOfMembers, field.value());
    return !field.value().get_string().get(rule.*members[*index].field);
}

bool readRule(json::value value, URLRuleView &rule) {
    json::object object;
    if (value.get_object().get(object))
        return false;
    Present present;
    for (auto element : object) {
        json::field field;
        if (std::move(element).get(field) || !readMember(field, rule, present))
            return false;
    }
    return present.all();
}

bool isAtEnd(json::document &document) {
    const char *location = nullptr;
    return document.current_location().get(location) == simdjson::OUT_OF_BOUNDS;
}

} // namespace

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

bool visitURLRules(std::string_view text, const std::function<bool(const URLRuleView &)> &visit) {
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    // A second one is not JSON, but newer versions of simdjson skip it.
    if (text.starts_with(byteOrderMark))
        return false;

    const simdjson::padded_string padded(text);
    json::parser parser;
    json::document document;
    json::array array;
    if (parser.iterate(padded).get(document) || document.get_array().get(array))
        return false;

    bool wantsMore = true;
    for (auto element : array) {
        json::value value;
        URLRuleView rule;
        if (element.get(value) || !readRule(value, rule))
            return false;
        wantsMore = wantsMore && visit(rule);
    }
    return isAtEnd(document);
}

std::optional<std::vector<URLRule>> decodeURLRules(std::string_view json) {
    std::vector<URLRule> rules;
    rules.reserve(json.size() / usualRuleSize);
    const auto keep = [&rules](const URLRuleView &rule) {
        rules.push_back({std::string(rule.id), std::string(rule.pattern), std::string(rule.browserBundleID)});
        return true;
    };
    return visitURLRules(json, keep) ? std::optional(std::move(rules)) : std::nullopt;
}

} // namespace fernhop
