#include "routing/LinkIntake.h"

#include <utility>

namespace fernhop {

LinkIntake::LinkIntake(std::function<void(const Url &)> routeLink) : route(std::move(routeLink)) {}

void LinkIntake::handleGetURLEvent(const LinkEventDescriptor &event) {
    const LinkEventDescriptor *directObject = event.paramDescriptorForKeyword(directObjectKeyword);
    if (!directObject || !directObject->stringValue)
        return;
    if (const auto url = Url::parse(*directObject->stringValue))
        enqueueURLForRouting(*url);
}

void LinkIntake::enqueueURLForRouting(const Url &url) {
    if (launched)
        route(url);
    else
        pending.push_back(url);
}

void LinkIntake::processPendingURLs() {
    for (const Url &url : std::exchange(pending, {}))
        route(url);
}

} // namespace fernhop
