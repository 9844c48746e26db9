#include "platform/UrlEncoding.h"

#include "platform/Ascii.h"

#include <optional>

namespace fernhop {

namespace {

constexpr std::string_view authorityCharacters = ":";
constexpr std::string_view pathCharacters = ":@/";
constexpr std::string_view queryCharacters = ":@/?";

/// Whether a character is "unreserved" or "sub-delims" in RFC 3986, which are allowed in every component.
bool isAllowedEverywhere(char character) {
    return ascii::isLetter(character) || ascii::isDigit(character) ||
           std::string_view("-._~!$&'()*+,;=").find(character) != std::string_view::npos;
}

std::optional<int> hexadecimalValue(char character) {
    if (ascii::isDigit(character))
        return character - '0';
    const char small = ascii::lowercased(character);
    return small >= 'a' && small <= 'f' ? std::optional(small - 'a' + 10) : std::nullopt;
}

/// The byte that the escape at `position` encodes; nothing when there is no escape.
std::optional<char> escapeAt(std::string_view text, std::size_t position) {
    if (text[position] != '%' || text.size() - position < 3)
        return std::nullopt;
    const auto high = hexadecimalValue(text[position + 1]);
    const auto low = hexadecimalValue(text[position + 2]);
    if (!high || !low)
        return std::nullopt;
    return static_cast<char>(*high * 16 + *low);
}

void appendEscape(std::string &result, char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    result += '%';
    result += digits[static_cast<unsigned char>(byte) >> 4];
    result += digits[static_cast<unsigned char>(byte) & 0x0F];
}

void appendEncoded(std::string &result, std::string_view text, std::string_view alsoAllowed) {
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char byte = text[position];
        const bool allowed = isAllowedEverywhere(byte) || alsoAllowed.find(byte) != std::string_view::npos;
        if (allowed || escapeAt(text, position))
            result += byte;
        else
            appendEscape(result, byte);
    }
}

/// Appends host and port. Brackets are kept only around the host; the validation checks that they contain an
/// IP literal.
void appendEncodedHost(std::string &result, std::string_view host) {
    const auto closing = host.starts_with('[') ? host.rfind(']') : std::string_view::npos;
    if (closing != std::string_view::npos) {
        result += '[';
        appendEncoded(result, host.substr(1, closing - 1), authorityCharacters);
        result += ']';
        host.remove_prefix(closing + 1);
    }
    // All colons are kept: with more than one the port is not a number, and the validation fails.
    appendEncoded(result, host, authorityCharacters);
}

void appendEncodedAuthority(std::string &result, std::string_view authority) {
    const auto at = authority.rfind('@');
    if (at != std::string_view::npos) {
        appendEncoded(result, authority.substr(0, at), authorityCharacters);
        result += '@';
        authority.remove_prefix(at + 1);
    }
    appendEncodedHost(result, authority);
}

/// Removes the first `delimiter` and what follows it from `text`, and returns what follows it.
std::optional<std::string_view> takeAfter(std::string_view &text, char delimiter) {
    const auto found = text.find(delimiter);
    if (found == std::string_view::npos)
        return std::nullopt;
    const std::string_view rest = text.substr(found + 1);
    text = text.substr(0, found);
    return rest;
}

} // namespace

UrlComponents urlComponents(std::string_view text) {
    UrlComponents result;
    const auto delimiter = text.find_first_of(":/?#");
    if (delimiter != std::string_view::npos && text[delimiter] == ':') {
        result.scheme = text.substr(0, delimiter);
        text.remove_prefix(delimiter + 1);
    }
    const auto fragment = takeAfter(text, '#');
    const auto query = takeAfter(text, '?');
    result.hasFragment = fragment.has_value();
    result.fragment = fragment.value_or("");
    result.hasQuery = query.has_value();
    result.query = query.value_or("");
    result.hasAuthority = text.starts_with("//");
    if (result.hasAuthority) {
        text.remove_prefix(2);
        result.authority = text.substr(0, text.find('/'));
        text.remove_prefix(result.authority.size());
    }
    result.path = text;
    return result;
}

std::string percentEncoded(const UrlComponents &components) {
    std::string result(components.scheme);
    result += ':';
    if (components.hasAuthority) {
        result += "//";
        appendEncodedAuthority(result, components.authority);
    }
    appendEncoded(result, components.path, pathCharacters);
    if (components.hasQuery) {
        result += '?';
        appendEncoded(result, components.query, queryCharacters);
    }
    if (components.hasFragment) {
        result += '#';
        appendEncoded(result, components.fragment, queryCharacters);
    }
    return result;
}

std::string percentEncodedPath(std::string_view path) {
    std::string result;
    result.reserve(path.size());
    for (const char byte : path) {
        if (isAllowedEverywhere(byte) || pathCharacters.find(byte) != std::string_view::npos)
            result += byte;
        else
            appendEscape(result, byte);
    }
    return result;
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        const auto byte = escapeAt(text, position);
        result += byte.value_or(text[position]);
        position += byte ? 2 : 0;
    }
    return result;
}

} // namespace fernhop
