#include "platform/linux/applications/DesktopBundles.h"

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/PassOnPrograms.h"

#include <unistd.h>

#include <utility>

namespace fernhop::freedesktop {

namespace {

class DesktopBundle : public Bundle {
  public:
    explicit DesktopBundle(DesktopEntry desktopEntry) : entry(std::move(desktopEntry)) {}

    std::optional<std::string> bundleIdentifier() const override {
        return entry.noDisplay ? std::nullopt : std::optional(entry.id);
    }

    std::optional<PropertyValue> objectForInfoDictionaryKey(std::string_view key) const override {
        if (key == "CFBundleDisplayName")
            return asProperty(entry.name);
        if (key == "CFBundleName")
            return asProperty(entry.unlocalizedName);
        if (key == "CFBundleURLTypes" && !entry.schemes.empty())
            return urlTypes();
        return std::nullopt;
    }

  private:
    static std::optional<PropertyValue> asProperty(const std::optional<std::string> &text) {
        return text ? std::optional(PropertyValue{*text}) : std::nullopt;
    }

    [[nodiscard]] PropertyValue urlTypes() const {
        PropertyArray schemes;
        for (const auto &scheme : entry.schemes)
            schemes.push_back({scheme});
        return {PropertyArray{{PropertyDictionary{{"CFBundleURLSchemes", {std::move(schemes)}}}}}};
    }

    DesktopEntry entry;
};

/// Fernhop's own entry keeps its name and place; whoever picks a target leaves it out by its identifier.
bool wouldReturnLinks(const DesktopEntry &entry) {
    return !isFernhop(entry) && isGenericOpener(entry);
}

} // namespace

DesktopBundles::DesktopBundles(const InstalledDesktopEntries &desktopEntries, std::string resourceFolder)
    : entries(desktopEntries), resources(std::move(resourceFolder)) {}

std::unique_ptr<Bundle> DesktopBundles::bundleWithUrl(const Url &url) const {
    auto entry = url.isFileUrl() ? entries.decidingEntryAtPath(url.path()) : std::nullopt;
    if (!entry || wouldReturnLinks(*entry))
        return nullptr;
    return std::make_unique<DesktopBundle>(std::move(*entry));
}

std::optional<std::string> DesktopBundles::mainBundleIdentifier() const {
    return std::string(fernhopDesktopID);
}

std::optional<Url> DesktopBundles::urlForResource(std::string_view name, std::string_view extension) const {
    if (resources.empty())
        return std::nullopt;
    const std::string path = resources + "/" + std::string(name) + "." + std::string(extension);
    return access(path.c_str(), F_OK) == 0 ? std::optional(Url::fileUrl(path)) : std::nullopt;
}

std::optional<Url> applicationUrl(const DesktopEntries &entries, const std::string &bundleID) {
    const auto entry = entries.entry(bundleID);
    return entry && !wouldReturnLinks(*entry) ? std::optional(Url::fileUrl(entry->path)) : std::nullopt;
}

} // namespace fernhop::freedesktop
