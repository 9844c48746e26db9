#include "platform/Ascii.h"
#include "platform/Url.h"
#include "platform/UrlEncoding.h"

#import <Foundation/Foundation.h>
#include <arpa/inet.h>

#include <algorithm>

namespace fernhop {

namespace {

bool isScheme(std::string_view scheme) {
    return !scheme.empty() && ascii::isLetter(scheme.front()) &&
           std::ranges::all_of(scheme, [](char character) {
               return ascii::isLetter(character) || ascii::isDigit(character) ||
                      std::string_view("+-.").find(character) != std::string_view::npos;
           });
}

bool isHexadecimal(char character) {
    const char small = ascii::lowercased(character);
    return ascii::isDigit(character) || (small >= 'a' && small <= 'f');
}

/// Whether the text is "v", hexadecimal digits, a dot and an address: the form reserved for addresses after
/// version 6. The encoding has already checked the characters of the address, and leaves no escapes here.
bool isFutureAddress(std::string_view literal) {
    const auto dot = literal.find('.');
    return ascii::lowercased(literal.front()) == 'v' && dot != std::string_view::npos && dot > 1 &&
           std::ranges::all_of(literal.substr(1, dot - 1), isHexadecimal) && dot + 1 < literal.size() &&
           literal.find('%') == std::string_view::npos;
}

bool isAddressLiteral(std::string_view literal) {
    in6_addr address;
    return !literal.empty() &&
           (isFutureAddress(literal) || inet_pton(AF_INET6, std::string(literal).c_str(), &address) == 1);
}

/// Whether host and port, which contain only characters allowed in URLs, are well formed.
bool isHostWithPort(std::string_view host) {
    if (host.starts_with('[')) {
        const auto closing = host.find(']');
        if (closing == std::string_view::npos || !isAddressLiteral(host.substr(1, closing - 1)))
            return false;
        host.remove_prefix(closing + 1);
        if (!host.empty() && host.front() != ':')
            return false;
    }
    const auto colon = host.find(':');
    return colon == std::string_view::npos || std::ranges::all_of(host.substr(colon + 1), [](char character) {
               return ascii::isDigit(character);
           });
}

bool isWellFormed(const UrlComponents &components) {
    const auto at = components.authority.rfind('@');
    return isScheme(components.scheme) &&
           isHostWithPort(at == std::string_view::npos ? components.authority
                                                       : components.authority.substr(at + 1));
}

} // namespace

// Newer systems encode a text that is not a URI in `URLWithString:`, older ones refuse it. So the text is
// always encoded first, which does not change a valid URI.
std::optional<Url> Url::parse(std::string_view text) {
    const UrlComponents delivered = urlComponents(text);
    if (delivered.scheme.empty())
        return std::nullopt;
    std::string encoded = percentEncoded(delivered);
    if (!isWellFormed(urlComponents(encoded)))
        return std::nullopt;
    @autoreleasepool {
        if (![NSURL URLWithString:[NSString stringWithUTF8String:encoded.c_str()]])
            return std::nullopt;
    }
    return Url(std::move(encoded));
}

} // namespace fernhop
