#pragma once

#include "platform/linux/tray/IconFinder.h"
#include "platform/ui/Image.h"

#include <string>
#include <unordered_map>
#include <variant>

namespace fernhop::freedesktop {

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
    /// `iconFinder`, which tells the icons of applications, outlives this object.
    explicit MenuIcons(const IconFinder &iconFinder) : finder(iconFinder) {}

    /// The icon of an image, which may be null; it lives until `forgetUnused`.
    [[nodiscard]] const MenuIcon &icon(const ui::ImageReference &image);

    /// Forgets the icons of images that nobody else holds any more.
    void forgetUnused();

  private:
    [[nodiscard]] MenuIcon make(const ui::Image &image) const;

    const IconFinder &finder;
    std::unordered_map<ui::ImageReference, MenuIcon> known;
};

} // namespace fernhop::freedesktop
