#include "rules/JsonValidation.h"

#include "platform/Ascii.h"

#include <string_view>

namespace fernhop {

namespace {

using simdjson::ondemand::json_type;
using simdjson::ondemand::value;

constexpr int deepestNesting = 512;

bool isWellFormedAt(int depth, value json);

/// Takes the digits off the front of `text`. Whether there were any.
bool takeDigits(std::string_view &text) {
    const std::size_t before = text.size();
    while (!text.empty() && ascii::isDigit(text.front()))
        text.remove_prefix(1);
    return text.size() < before;
}

bool takeOneOf(std::string_view characters, std::string_view &text) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
}

/// The grammar of RFC 8259, section 6.
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

bool isWellFormedScalar(value json) {
    std::string_view token = json.raw_json_token();
    const auto last = token.find_last_not_of(" \t\n\r");
    token = token.substr(0, last == std::string_view::npos ? 0 : last + 1);
    return token == "true" || token == "false" || token == "null" || isNumber(token);
}

bool isWellFormedArray(int depth, value json) {
    simdjson::ondemand::array array;
    if (json.get_array().get(array))
        return false;
    for (auto element : array) {
        value inner;
        if (element.get(inner) || !isWellFormedAt(depth + 1, inner))
            return false;
    }
    return true;
}

bool isWellFormedObject(int depth, value json) {
    simdjson::ondemand::object object;
    if (json.get_object().get(object))
        return false;
    for (auto element : object) {
        simdjson::ondemand::field field;
        std::string_view key;
        if (std::move(element).get(field) || field.unescaped_key().get(key) ||
            !isWellFormedAt(depth + 1, field.value()))
            return false;
    }
    return true;
}

bool isWellFormedAt(int depth, value json) {
    json_type type;
    if (depth > deepestNesting || json.type().get(type))
        return false;
    switch (type) {
    case json_type::array:
        return isWellFormedArray(depth, json);
    case json_type::object:
        return isWellFormedObject(depth, json);
    case json_type::string:
        return json.get_string().error() == simdjson::SUCCESS;
    default:
        return isWellFormedScalar(json);
    }
}

} // namespace

// A rule's members lie in an object that lies in the array of rules.
bool isWellFormed(value json) {
    return isWellFormedAt(3, json);
}

} // namespace fernhop
