#include "rules/JsonValidation.h"
#include "rules/URLRuleCoding.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <bitset>

namespace fernhop {

namespace {

namespace json = simdjson::ondemand;

/// About what a rule takes in JSON, with its identifier of 36 characters and the names of its members.
constexpr std::size_t usualRuleSize = 120;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The members of a rule in the order in which they are written.
struct Member {
    std::string_view name;
    std::string_view URLRuleView::*field;
};
constexpr std::array<Member, 3> members{{{"id", &URLRuleView::id},
                                         {"pattern", &URLRuleView::pattern},
                                         {"browserBundleID", &URLRuleView::browserBundleID}}};

/// Which of `members` a rule has, as strings.
using Present = std::bitset<members.size()>;

/// The index in `members`, their number for any other name; nothing when the name is not JSON.
std::optional<std::size_t> memberIndex(json::field &field) {
    const auto named = [](auto equals) {
        return static_cast<std::size_t>(std::ranges::find_if(members, equals, &Member::name) -
                                        members.begin());
    };
    // Written without escapes, as they nearly always are, names need not be copied.
    const json::raw_json_string raw = field.key();
    const std::size_t index = named([&raw](std::string_view name) { return raw.unsafe_is_equal(name); });
    if (index < members.size())
        return index;
    std::string_view unescaped;
    if (field.unescaped_key().get(unescaped))
        return std::nullopt;
    return named([unescaped](std::string_view name) { return name == unescaped; });
}

/// Reads one member into its place. False when the text is not JSON; a value of another type leaves the
/// member absent. Of two members with the same name the later one counts.
bool readMember(json::field field, URLRuleView &rule, Present &present) {
    const auto index = memberIndex(field);
    json::json_type type;
    if (!index || field.value().type().get(type))
        return false;
    if (*index < members.size())
        present[*index] = type == json::json_type::string;
    if (*index == members.size() || type != json::json_type::string)
        return isWellFormed(field.value());
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

bool visitURLRules(std::string_view text, const std::function<bool(const URLRuleView &)> &visit) {
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    // A second one is no JSON; newer versions of simdjson would pass over it.
    if (text.starts_with(byteOrderMark))
        return false;

    const simdjson::padded_string padded(text);
    json::parser parser;
    json::document document;
    json::array array;
    if (parser.iterate(padded).get(document) || document.get_array().get(array))
        return false;

    bool goesOn = true;
    for (auto element : array) {
        json::value value;
        URLRuleView rule;
        if (element.get(value) || !readRule(value, rule))
            return false;
        goesOn = goesOn && visit(rule);
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
