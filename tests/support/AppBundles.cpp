#include "support/AppBundles.h"

#include "platform/linux/settings/PropertyList.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace fernhop::support {

namespace {

class AppBundle : public Bundle {
  public:
    explicit AppBundle(PropertyDictionary infoDictionary) : info(std::move(infoDictionary)) {}

    std::optional<std::string> bundleIdentifier() const override {
        const auto value = objectForInfoDictionaryKey("CFBundleIdentifier");
        const auto *identifier = value ? value->as<std::string>() : nullptr;
        return identifier ? std::optional(*identifier) : std::nullopt;
    }

    std::optional<PropertyValue> objectForInfoDictionaryKey(std::string_view key) const override {
        const auto found = info.find(key);
        return found == info.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    PropertyDictionary info;
};

PropertyDictionary infoDictionary(const std::filesystem::path &bundle) {
    std::ifstream file(bundle / "Contents" / "Info.plist", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const auto tree = freedesktop::decodePropertyList(bytes);
    const auto value = tree ? freedesktop::propertyValue(tree.get()) : std::nullopt;
    const auto *dictionary = value ? value->as<PropertyDictionary>() : nullptr;
    return dictionary ? *dictionary : PropertyDictionary();
}

} // namespace

std::unique_ptr<Bundle> AppBundles::bundleWithUrl(const Url &url) const {
    const std::filesystem::path path = url.path();
    return std::filesystem::is_directory(path) ? std::make_unique<AppBundle>(infoDictionary(path)) : nullptr;
}

} // namespace fernhop::support
