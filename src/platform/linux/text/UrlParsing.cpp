#include "platform/Url.h"
#include "platform/UrlEncoding.h"

#include <uriparser/Uri.h>

namespace fernhop {

namespace {

bool isValidReference(std::string_view text) {
    UriUriA uri;
    const char *errorPosition = nullptr;
    if (uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), &errorPosition) != URI_SUCCESS)
        return false;
    uriFreeUriMembersA(&uri);
    return true;
}

} // namespace

std::optional<Url> Url::parse(std::string_view text) {
    const UrlComponents components = urlComponents(text);
    if (components.scheme.empty())
        return std::nullopt;
    if (isValidReference(text))
        return Url(std::string(text));
    std::string encoded = percentEncoded(components);
    if (!isValidReference(encoded))
        return std::nullopt;
    return Url(std::move(encoded));
}

} // namespace fernhop
