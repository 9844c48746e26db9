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

    /// The identifier under which the application takes part in catalogs; nothing when it has none, or is to
    /// be found by name only and never listed.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;

    /// The value of an Info.plist key, in the user's language where the description has several; nothing when
    /// absent.
    [[nodiscard]] virtual std::optional<PropertyValue>
    objectForInfoDictionaryKey(std::string_view key) const = 0;
};

/// Opens bundles and knows the application's own. Main thread only.
class Bundles {
  public:
    virtual ~Bundles() = default;

    /// The bundle at a file URL; null when there is none that can be read. The caller owns it; it keeps what
    /// it read, so a later change on disk does not reach it.
    [[nodiscard]] virtual std::unique_ptr<Bundle> bundleWithUrl(const Url &url) const = 0;

    /// The identifier of the running application's own bundle; nothing when it runs outside of one.
    [[nodiscard]] virtual std::optional<std::string> mainBundleIdentifier() const = 0;

    /// The file of the application's own resource `name` with the path extension `extension`; nothing when
    /// there is none.
    [[nodiscard]] virtual std::optional<Url> urlForResource(std::string_view name,
                                                            std::string_view extension) const = 0;
};

} // namespace fernhop
