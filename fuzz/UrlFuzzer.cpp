// Links of any bytes: what becomes a URL is one for good, and says the same as the text did.

#include "platform/Ascii.h"
#include "platform/Url.h"
#include "platform/UrlEncoding.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using fernhop::Url;

void require(bool holds) {
    if (!holds)
        std::abort();
}

void checkDelivered(std::string_view text) {
    const auto url = Url::parse(text);
    if (!url)
        return;
    const std::string &result = url->absoluteString();
    require(fernhop::ascii::isAscii(result) && result.find_first_of(" \n\"<>\\^`{|}") == std::string::npos);
    require(Url::parse(result) == url);
    require(fernhop::percentDecoded(result) == fernhop::percentDecoded(text));
    require(url->isFileUrl() == fernhop::ascii::lowercased(text).starts_with("file:"));
    const std::string path = url->path();
    require(path.size() < 2 || path.back() != '/');
}

void checkFile(std::string path) {
    const Url url = Url::fileUrl(path);
    require(Url::parse(url.absoluteString()) == url && url.isFileUrl());
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    require(url.path() == path);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    checkDelivered(text);
    checkDelivered("https://" + std::string(text));
    checkFile("/" + std::string(text));
    return 0;
}
