#include "routing/JsonValidation.h"
#include "routing/URLRuleCoding.h"

#include <simdjson.h>

namespace fernhop {

namespace {

namespace json = simdjson::ondemand;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// A rule's members as read so far. Of two members with the same name the later one counts.
struct Members {
    std::optional<std::string> id;
    std::optional<std::string> pattern;
    std::optional<std::string> browserBundleID;

    [[nodiscard]] std::optional<std::string> *named(std::string_view name) {
        if (name == "id")
            return &id;
        if (name == "pattern")
            return &pattern;
        return name == "browserBundleID" ? &browserBundleID : nullptr;
    }
};

/// Reads one member into its place. False when the text is not JSON; a value of another type leaves the place
/// empty.
bool readMember(json::field field, Members &members) {
    std::string_view name;
    if (field.unescaped_key().get(name))
        return false;
    const auto member = members.named(name);
    json::json_type type;
    if (field.value().type().get(type))
        return false;
    if (member)
        member->reset();
    if (!member || type != json::json_type::string)
        return isWellFormed(field.value());
    std::string_view text;
    if (field.value().get_string().get(text))
        return false;
    member->emplace(text);
    return true;
}

std::optional<URLRule> readRule(json::value value) {
    json::object object;
    if (value.get_object().get(object))
        return std::nullopt;
    Members members;
    for (auto element : object) {
        json::field field;
        if (std::move(element).get(field) || !readMember(field, members))
            return std::nullopt;
    }
    if (!members.id || !members.pattern || !members.browserBundleID)
        return std::nullopt;
    return URLRule{*std::move(members.id), *std::move(members.pattern), *std::move(members.browserBundleID)};
}

bool isAtEnd(json::document &document) {
    const char *location = nullptr;
    return document.current_location().get(location) == simdjson::OUT_OF_BOUNDS;
}

} // namespace

std::optional<std::vector<URLRule>> decodeURLRules(std::string_view text) {
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());

    const simdjson::padded_string padded(text);
    json::parser parser;
    json::document document;
    json::array array;
    if (parser.iterate(padded).get(document) || document.get_array().get(array))
        return std::nullopt;

    std::vector<URLRule> rules;
    for (auto element : array) {
        json::value value;
        if (element.get(value))
            return std::nullopt;
        std::optional<URLRule> rule = readRule(value);
        if (!rule)
            return std::nullopt;
        rules.push_back(*std::move(rule));
    }
    return isAtEnd(document) ? std::optional(std::move(rules)) : std::nullopt;
}

} // namespace fernhop
