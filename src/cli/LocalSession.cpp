#include "cli/LocalSession.h"

#include "catalog/OwnBundleID.h"

namespace fernhop::cli {

LocalSession::LocalSession(const Parts &sessionParts)
    : parts(sessionParts), applicationCatalog(parts.files, parts.bundles, parts.layout),
      catalog(parts.workspace, parts.files, parts.bundles, applicationCatalog), preferences(parts.defaults),
      browserList(catalog.installedBrowsers(ownBundleID(parts.bundles))),
      router({preferences, catalog, parts.workspace, parts.files, parts.bundles, browserList}),
      defaultHandlers({parts.launchServices, parts.defaults, parts.bundles, parts.sound, browserList},
                      [] {}) {}

Context LocalSession::context() {
    return {preferences, parts.launchServices, parts.bundles, catalog, defaultHandlers, *this, parts.report};
}

const std::vector<InstalledApplication> &LocalSession::installedApplications() {
    if (!applicationList)
        applicationList = applicationCatalog.installedApplications(ownBundleID(parts.bundles));
    return *applicationList;
}

RoutingDecision LocalSession::decide(const Url &url, const std::optional<std::string> &source) {
    return router.decide(url, source);
}

} // namespace fernhop::cli
