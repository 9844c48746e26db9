#include "catalog/AppIcons.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace fernhop {

namespace {

constexpr double identifierIconSize = 16;

std::int64_t wholePoints(double size) {
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!std::isfinite(size) || size < -limit || size >= limit)
        std::abort();
    return static_cast<std::int64_t>(size);
}

template <typename Record>
const Record *withIdentifier(const std::vector<Record> &records, const std::string &bundleID) {
    const auto found = std::ranges::find(records, bundleID, &Record::bundleID);
    return found == records.end() ? nullptr : &*found;
}

} // namespace

ui::ImageReference AppIcons::appIcon(const Url &appURL, double size) {
    const std::string path = appURL.path();
    ui::ImageReference &cached = appIconCache[path + "#" + std::to_string(wholePoints(size))];
    if (!cached)
        cached = sources.workspace.iconForFile(path, size);
    return cached;
}

ui::ImageReference AppIcons::appIcon(const std::optional<std::string> &bundleID, double) {
    const auto url = bundleID ? urlOf(*bundleID) : std::nullopt;
    return url ? appIcon(*url, identifierIconSize) : nullptr;
}

std::string AppIcons::appName(const std::string &bundleID) const {
    const auto *application = withIdentifier(sources.installedApplications, bundleID);
    return application ? application->name : sources.catalog.appDisplayName(bundleID);
}

std::optional<Url> AppIcons::urlOf(const std::string &bundleID) const {
    if (const auto *application = withIdentifier(sources.installedApplications, bundleID))
        return application->appURL;
    if (const auto *browser = withIdentifier(sources.installedBrowsers, bundleID))
        return browser->appURL;
    return sources.workspace.urlForApplicationWithBundleIdentifier(bundleID);
}

} // namespace fernhop
