#include "catalog/ApplicationCatalog.h"

#include "catalog/BundleDescription.h"
#include "platform/Text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace fernhop {

namespace {

/// The part of the last path component after its last dot; empty without a dot, or when the name begins with
/// its only dot: ".app" is a hidden file.
std::string_view pathExtension(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

bool namedBefore(const InstalledApplication &left, const InstalledApplication &right) {
    return text::localizedCaseInsensitiveCompare(left.name, right.name) < 0;
}

} // namespace

ApplicationCatalog::ApplicationCatalog(const FileManager &files, const Bundles &openedBundles,
                                       ApplicationLayout whereApplicationsAre)
    : fileManager(files), bundles(openedBundles), layout(std::move(whereApplicationsAre)) {}

std::vector<Url> ApplicationCatalog::applicationSearchDirectories() const {
    std::vector<Url> existing;
    for (const auto &directory : layout.directories) {
        if (fileManager.fileExistsAtPath(directory.path()))
            existing.push_back(directory);
    }
    return existing;
}

std::vector<Url> ApplicationCatalog::appBundleURLs(const Url &in) const {
    std::vector<Url> found;
    const auto enumerator = fileManager.enumeratorAtUrl(in);
    if (!enumerator)
        return found;
    while (auto url = enumerator->next()) {
        if (pathExtension(url->path()) != layout.bundleExtension)
            continue;
        found.push_back(std::move(*url));
        enumerator->skipDescendants();
    }
    return found;
}

std::vector<InstalledApplication>
ApplicationCatalog::installedApplications(const std::optional<std::string> &excluding) const {
    std::vector<InstalledApplication> applications;
    std::set<std::string> taken;
    for (const auto &directory : applicationSearchDirectories()) {
        for (auto &url : appBundleURLs(directory)) {
            const auto bundle = bundles.bundleWithUrl(url);
            const auto identifier = bundle ? bundle->bundleIdentifier() : std::nullopt;
            if (!identifier || identifier == excluding || !taken.insert(*identifier).second)
                continue;
            std::string name = displayName(url, bundle.get(), fileManager);
            applications.push_back({std::move(name), *identifier, std::move(url), declaredSchemes(*bundle)});
        }
    }
    std::stable_sort(applications.begin(), applications.end(), namedBefore);
    return applications;
}

} // namespace fernhop
