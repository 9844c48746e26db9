#pragma once

#include "platform/linux/tray/MenuTree.h"

#include <map>
#include <string>
#include <unordered_map>

namespace fernhop::freedesktop {

/// What each host has read of a menu, to tell it when that is no longer so: hosts that read level by level
/// ask before a level shows. Main thread only.
class MenuReaders {
  public:
    /// Notes that `host`, a name on the bus, is told the item with an id, which is there, and `depth` levels
    /// beneath it (negative: all).
    void reads(const std::string &host, const MenuTree &tree, MenuTree::Id id, int depth);

    /// Whether `host` has read what is directly beneath an item as it looks now. What has no submenu is
    /// known.
    [[nodiscard]] bool knows(const std::string &host, const MenuTree::Entry &entry) const;

    /// Forgets what was read of items that are not in `tree` any more.
    void forgetAllBut(const MenuTree &tree);

  private:
    /// The revisions in which it was read.
    struct Knowledge {
        MenuTree::Revision whole = 0;
        std::unordered_map<MenuTree::Id, MenuTree::Revision> parts;
    };

    static void note(Knowledge &knowledge, const MenuTree &tree, MenuTree::Id id, int depth);

    std::map<std::string, Knowledge> hosts;
};

} // namespace fernhop::freedesktop
