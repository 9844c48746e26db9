#pragma once

#include "platform/PropertyValue.h"
#include "platform/Url.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// An application's description, opened for reading. Main thread only.
class Bundle {
  public:
    virtual ~Bundle() = default;

    /// The identifier under which catalogs list the application; nothing when it has none or must not be
    /// listed.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;

    /// The value of an Info.plist key, in the user's language where the description has several; nothing when
    /// absent.
    [[nodiscard]] virtual std::optional<PropertyValue>
    objectForInfoDictionaryKey(std::string_view key) const = 0;
};

/// Opens bundles, and gives access to Fernhop's own. Main thread only.
class Bundles {
  public:
    virtual ~Bundles() = default;

    /// The bundle at a file URL, which the caller owns; null when there is none that can be read. Later
    /// changes on disk do not affect it.
    [[nodiscard]] virtual std::unique_ptr<Bundle> bundleWithUrl(const Url &url) const = 0;

    /// The identifier of Fernhop's own bundle; nothing when it is not running from a bundle.
    [[nodiscard]] virtual std::optional<std::string> mainBundleIdentifier() const = 0;

    /// The file of Fernhop's own resource `name` with the path extension `extension`; nothing when there is
    /// none.
    [[nodiscard]] virtual std::optional<Url> urlForResource(std::string_view name,
                                                            std::string_view extension) const = 0;
};

} // namespace fernhop
