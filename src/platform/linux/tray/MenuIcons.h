#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/ui/Image.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <variant>

namespace fernhop::freedesktop {

/// A name in the icon theme, which the host looks up in its own theme and at its own size.
struct IconName {
    std::string name;

    bool operator==(const IconName &) const = default;
};

/// The bytes of a PNG file.
struct IconData {
    std::string png;

    bool operator==(const IconData &) const = default;
};

/// What a host of menus is told about an image; nothing: it shows none.
using MenuIcon = std::variant<std::monostate, IconName, IconData>;

/// Turns the images of menu items into what hosts of menus take, once for each. Main thread only.
class MenuIcons {
  public:
    /// `entries` outlives this object.
    explicit MenuIcons(const DesktopEntries &desktopEntries) : entries(desktopEntries) {}

    /// The icon of an image, which may be null; it lives until `forgetUnused`.
    [[nodiscard]] const MenuIcon &icon(const ui::ImageReference &image);

    /// Forgets the icons of images that nobody else holds any more.
    void forgetUnused();

  private:
    [[nodiscard]] MenuIcon make(const ui::Image &image) const;
    [[nodiscard]] MenuIcon iconOfApplication(const std::string &path) const;

    const DesktopEntries &entries;
    std::unordered_map<ui::ImageReference, MenuIcon> known;
};

} // namespace fernhop::freedesktop
