#include "catalog/BrowserCatalog.h"

#include "catalog/BundleDescription.h"

#include <utility>

namespace fernhop {

BrowserCatalog::BrowserCatalog(const Workspace &session, const FileManager &files,
                               const Bundles &openedBundles, ApplicationCatalog applications)
    : workspace(session), fileManager(files), bundles(openedBundles),
      applicationCatalog(std::move(applications)) {}

std::optional<Browser> BrowserCatalog::browser(const std::string &bundleID) const {
    auto url = workspace.urlForApplicationWithBundleIdentifier(bundleID);
    if (!url)
        return std::nullopt;
    std::string name = displayName(*url, bundles.bundleWithUrl(*url).get(), fileManager);
    return Browser{std::move(name), bundleID, std::move(*url)};
}

std::string BrowserCatalog::appDisplayName(const std::string &bundleID) const {
    const auto found = browser(bundleID);
    return found ? found->name : bundleID;
}

std::vector<Browser> BrowserCatalog::installedBrowsers(const std::optional<std::string> &excluding) const {
    std::vector<Browser> browsers;
    for (auto &application : applicationCatalog.installedApplications(excluding)) {
        const auto &schemes = application.urlSchemes;
        if (schemes.contains("http") || schemes.contains("https"))
            browsers.push_back({std::move(application.name), std::move(application.bundleID),
                                std::move(application.appURL)});
    }
    return browsers;
}

} // namespace fernhop
