#pragma once

#include "platform/ui/MenuItem.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace fernhop::freedesktop {

/// The items of a menu by the ids under which hosts know them. An item keeps its id from menu to menu as long
/// as it looks the same and has the same action; an id never comes to mean another item, so a click that was
/// on its way while the menu changed cannot hit a wrong one. Main thread only.
class MenuTree {
  public:
    using Id = std::int32_t;
    using Revision = std::uint32_t;
    static constexpr Id root = 0;

    struct Entry {
        Id id = root;
        const ui::MenuItem *item = nullptr; ///< null: the menu itself
        std::vector<Id> children;
        Revision changedIn = 0; ///< since when the children look as they do
        Id parent = root;
    };

    /// Starts with an empty menu.
    MenuTree();

    /// Puts `menu`, not null, in the place of the present one; true if it looks different.
    bool show(std::shared_ptr<const ui::Menu> menu);

    /// How often the menu came to look different.
    [[nodiscard]] Revision revision() const { return lastRevision; }

    /// The item with an id; null when no such item is there any more, or never was.
    [[nodiscard]] const Entry *find(Id id) const;

    /// Every id in the order of the menu, the root's first.
    [[nodiscard]] std::vector<Id> ids() const;

    /// What the entries point into; whoever keeps it keeps the items.
    [[nodiscard]] const std::shared_ptr<const ui::Menu> &menu() const { return current; }

  private:
    /// Points every entry at its counterpart in a menu that looks the same.
    void pointInto(const ui::Menu &menu, std::size_t &next);
    [[nodiscard]] std::vector<Id> addItems(const ui::Menu &menu, const MenuTree *before, Id parent);
    /// Whether whoever knows the children from before knows them as they look now.
    [[nodiscard]] bool looksAsBefore(const Entry &parent, const MenuTree &before) const;

    std::shared_ptr<const ui::Menu> current;
    std::vector<Entry> entries; ///< in the order of the menu, the root first
    std::unordered_map<Id, std::size_t> places;
    Id lastId = root;
    Revision lastRevision = 0;
};

/// Which submenus one answer tells.
struct ToldSubmenus {
    std::unordered_set<MenuTree::Id> told;
    std::vector<MenuTree::Id> omitted; ///< asked for, but too many
};

/// More items than a host shows at once, and few enough that it is not busy with them for long.
inline constexpr std::size_t mostItemsOfAnswer = 10'000;

/// What each host has read of a menu, to tell it when that is no longer so: hosts that read level by level
/// ask before a level shows. Main thread only.
class MenuReaders {
  public:
    /// What `host`, a name on the bus, is to be told when it asks for the item with an id, which is there,
    /// and `depth` levels beneath it (negative: all): the level beneath the item and those that the host
    /// opened last in any case, the others from the top as long as there are no more than `most` items.
    [[nodiscard]] ToldSubmenus submenusFor(const std::string &host, const MenuTree &tree, MenuTree::Id id,
                                           int depth, std::size_t most = mostItemsOfAnswer) const;

    /// Notes that `host` is told these.
    void reads(const std::string &host, const MenuTree &tree, const ToldSubmenus &submenus);

    /// Notes that `host` is about to show what is beneath the item with an id, which is there.
    void opens(const std::string &host, const MenuTree &tree, MenuTree::Id id);

    /// Whether `host` has read what is directly beneath an item as it looks now. What has no submenu is
    /// known.
    [[nodiscard]] bool knows(const std::string &host, const MenuTree::Entry &entry) const;

    /// Forgets what was read of items that are not in `tree` any more.
    void forgetAllBut(const MenuTree &tree);

  private:
    struct Reader {
        /// The revisions in which the items beneath each id were read.
        std::unordered_map<MenuTree::Id, MenuTree::Revision> knowledge;
        std::vector<MenuTree::Id> opened; ///< the latest last
    };

    Reader &reader(const std::string &host);

    std::map<std::string, Reader> hosts;
};

} // namespace fernhop::freedesktop
