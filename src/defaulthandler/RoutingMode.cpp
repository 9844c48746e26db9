#include "defaulthandler/RoutingMode.h"

#include "catalog/OwnBundleID.h"

namespace fernhop {

bool isRoutingEnabled(const LaunchServices &launchServices, const Bundles &bundles) {
    return launchServices.copyDefaultHandlerForUrlScheme("https") == ownBundleID(bundles);
}

} // namespace fernhop
