#pragma once

#include "platform/Bundle.h"

namespace fernhop::support {

/// Real `.app` folders, read as macOS lays them out: Contents/Info.plist, an XML or a binary property list. A
/// folder without a readable one opens as an empty bundle.
class AppBundles : public Bundles {
  public:
    [[nodiscard]] std::unique_ptr<Bundle> bundleWithUrl(const Url &url) const override;
    [[nodiscard]] std::optional<std::string> mainBundleIdentifier() const override { return std::nullopt; }
    [[nodiscard]] std::optional<Url> urlForResource(std::string_view, std::string_view) const override {
        return std::nullopt; // tests run outside of a bundle
    }
};

} // namespace fernhop::support
