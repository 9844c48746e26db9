#include "platform/Url.h"

#include "platform/Ascii.h"
#include "platform/UrlEncoding.h"

namespace fernhop {

Url Url::fileUrl(std::string_view absolutePath) {
    return Url("file://" + percentEncodedPath(absolutePath));
}

std::string Url::path() const {
    std::string result = percentDecoded(urlComponents(text).path);
    while (result.size() > 1 && result.ends_with('/'))
        result.pop_back();
    return result;
}

bool Url::isFileUrl() const {
    return ascii::lowercased(urlComponents(text).scheme) == "file";
}

} // namespace fernhop
