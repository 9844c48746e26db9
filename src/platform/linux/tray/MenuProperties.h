#pragma once

#include "platform/linux/base/Bus.h"
#include "platform/linux/tray/MenuIcons.h"
#include "platform/linux/tray/MenuTree.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// The names of the properties that a host asks for; empty: all.
using PropertyFilter = std::set<std::string, std::less<>>;

/// The properties of an item by com.canonical.dbusmenu, a floating a{sv}.
[[nodiscard]] GVariant *menuProperties(const MenuTree::Entry &entry, const PropertyFilter &filter,
                                       MenuIcons &icons);

/// What one answer may hold, in bytes. The bus ends a connection that sends it a list of more than 64 MiB,
/// and what it carries is up to twice as long as a GVariant.
inline constexpr std::size_t largestMenuAnswer = 24 << 20;

/// The item with an id, which is there, and `depth` levels beneath it (negative: all): an (ia{sv}av). It
/// comes without pictures where it would take more than `mostBytes` with them; null where it does without
/// them, too.
[[nodiscard]] GVariantPointer menuLayout(const MenuTree &tree, MenuTree::Id id, int depth,
                                         const PropertyFilter &filter, MenuIcons &icons,
                                         std::size_t mostBytes = largestMenuAnswer);

/// The properties of those items of `ids` that are there, each once: an a(ia{sv}). Pictures and null as
/// above.
[[nodiscard]] GVariantPointer menuItems(const MenuTree &tree, const std::vector<MenuTree::Id> &ids,
                                        const PropertyFilter &filter, MenuIcons &icons,
                                        std::size_t mostBytes = largestMenuAnswer);

} // namespace fernhop::freedesktop
