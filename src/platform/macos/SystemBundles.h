#pragma once

#include "platform/Bundle.h"

namespace fernhop::macos {

/// The bundles on disk, and Fernhop's own.
class SystemBundles : public Bundles {
  public:
    [[nodiscard]] std::unique_ptr<Bundle> bundleWithUrl(const Url &url) const override;
    [[nodiscard]] std::optional<std::string> mainBundleIdentifier() const override;
    [[nodiscard]] std::optional<Url> urlForResource(std::string_view name,
                                                    std::string_view extension) const override;
};

} // namespace fernhop::macos
