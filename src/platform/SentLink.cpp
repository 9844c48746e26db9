#include "platform/SentLink.h"

#include "platform/Ascii.h"
#include "platform/UrlEncoding.h"

#include <algorithm>

namespace fernhop {

namespace {

bool isControlOrSpace(char character) {
    return static_cast<unsigned char>(character) <= ' ';
}

std::string withoutWhatBrowsersRemove(std::string_view sent) {
    while (!sent.empty() && isControlOrSpace(sent.front()))
        sent.remove_prefix(1);
    while (!sent.empty() && isControlOrSpace(sent.back()))
        sent.remove_suffix(1);
    std::string link(sent);
    std::erase_if(link,
                  [](char character) { return character == '\t' || character == '\n' || character == '\r'; });
    return link;
}

struct BrowserHost {
    bool isAddress;
    std::string text;

    bool operator==(const BrowserHost &) const = default;
};

/// The host and the port as a browser finds them in an http or https link without "\" before its query: it
/// passes over any number of slashes, none included, and takes the last "@" for the end of a user's name.
/// Escapes are decoded, as a browser does before it looks at a name. Not so in an address in brackets, and
/// encoded brackets are none.
BrowserHost hostForBrowsers(std::string_view link) {
    link.remove_prefix(link.find(':') + 1);
    link.remove_prefix(std::min(link.find_first_not_of('/'), link.size()));
    link = link.substr(0, link.find_first_of("/?#"));
    link.remove_prefix(link.rfind('@') + 1);
    const bool isAddress = link.starts_with('[');
    return {isAddress, isAddress ? std::string(link) : percentDecoded(link)};
}

} // namespace

std::optional<std::string> linkToDeliver(std::string_view sent) {
    auto link = withoutWhatBrowsersRemove(sent);
    const auto scheme = ascii::lowercased(urlComponents(link).scheme);
    if (scheme != "http" && scheme != "https")
        return link;
    std::replace(link.begin(),
                 std::find_if(link.begin(), link.end(),
                              [](char character) { return character == '?' || character == '#'; }),
                 '\\', '/');
    if (hostForBrowsers(percentEncoded(urlComponents(link))) != hostForBrowsers(link))
        return std::nullopt;
    return link;
}

} // namespace fernhop
