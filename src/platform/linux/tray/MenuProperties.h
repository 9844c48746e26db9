#pragma once

#include "platform/linux/base/Bus.h"
#include "platform/linux/base/Files.h"
#include "platform/linux/tray/IconFinder.h"
#include "platform/linux/tray/IconLoader.h"
#include "platform/linux/tray/MenuTree.h"
#include "platform/ui/Image.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <variant>
#include <vector>

namespace fernhop::freedesktop {

/// A text as the bus takes it and one line of a menu shows it: what is not UTF-8 becomes U+FFFD, control
/// characters and line separators become spaces, and what no screen is wide enough for is cut with an
/// ellipsis.
[[nodiscard]] std::string shownText(std::string_view text);

/// A title as a com.canonical.dbusmenu label: hosts take a single underscore for the mark of an access key
/// and drop it, so each is doubled. Everything else, '&' included, shows as it is.
[[nodiscard]] std::string menuLabel(std::string_view title);

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
    /// `iconFinder`, which tells the icons of applications, outlives this object. `loaded` is called with
    /// each image whose icon took longer to read, when it is there.
    explicit MenuIcons(const IconFinder &iconFinder,
                       std::function<void(const ui::ImageReference &image)> loaded = {});

    /// The icon of an image, which may be null; it lives until `forgetUnused`. Nothing for now when it is in
    /// a large file, which is being read then.
    [[nodiscard]] const MenuIcon &icon(const ui::ImageReference &image);

    /// Forgets the icons of images that nobody else holds any more.
    void forgetUnused();

  private:
    [[nodiscard]] MenuIcon make(const ui::ImageReference &image);
    [[nodiscard]] MenuIcon makeOfFile(const ui::ImageReference &image, const std::string &path, int side);

    const IconFinder &finder;
    std::unordered_map<ui::ImageReference, MenuIcon> known;
    /// Of large files by their paths, as a refresh of the applications makes their images anew.
    struct Scaled {
        std::optional<FileIdentity> identity;
        int side = 0;
        std::optional<std::string> png; ///< nothing: it is being read
    };
    std::unordered_map<std::string, Scaled> scaled;
    IconLoader loader;
};

/// The names of the properties that a host asks for; empty: all.
using PropertyFilter = std::set<std::string, std::less<>>;

/// The properties of an item by com.canonical.dbusmenu, a floating a{sv}.
[[nodiscard]] GVariant *menuProperties(const MenuTree::Entry &entry, const PropertyFilter &filter,
                                       MenuIcons &icons);

/// What one answer may hold, in bytes. The bus ends a connection that sends it a list of more than 64 MiB,
/// and what it carries is up to twice as long as a GVariant.
inline constexpr std::size_t largestMenuAnswer = 24 << 20;

/// The item with an id, which is there, and what is beneath those items that `told` contains: an (ia{sv}av).
/// It comes without pictures where it would take more than `mostBytes` with them; null where it does without
/// them, too.
[[nodiscard]] GVariantPointer menuLayout(const MenuTree &tree, MenuTree::Id id,
                                         const std::unordered_set<MenuTree::Id> &told,
                                         const PropertyFilter &filter, MenuIcons &icons,
                                         std::size_t mostBytes = largestMenuAnswer);

/// The properties of those items of `ids` that are there, each once: an a(ia{sv}). Pictures and null as
/// above.
[[nodiscard]] GVariantPointer menuItems(const MenuTree &tree, const std::vector<MenuTree::Id> &ids,
                                        const PropertyFilter &filter, MenuIcons &icons,
                                        std::size_t mostBytes = largestMenuAnswer);

} // namespace fernhop::freedesktop
