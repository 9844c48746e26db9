#include "cli/LinkArgument.h"

#include "cli/Results.h"
#include "platform/SentLink.h"

namespace fernhop::cli {

std::optional<Url> linkArgument(const std::string &text) {
    const auto link = linkToDeliver(text);
    return link ? Url::parse(*link) : std::nullopt;
}

std::string whyNoLink(const std::string &text) {
    return inQuotes(text) +
           (linkToDeliver(text) ? " is not a URL." : " is refused: " + std::string(refusedLink) + '.');
}

} // namespace fernhop::cli
