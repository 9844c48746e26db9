#pragma once

#include "platform/linux/glib/BusObject.h"
#include "platform/linux/tray/MenuIcons.h"
#include "platform/linux/tray/MenuTree.h"

#include <set>
#include <string>

namespace fernhop::freedesktop {

/// The names of the properties that a host asks for; empty: all.
using PropertyFilter = std::set<std::string, std::less<>>;

/// The properties of an item by com.canonical.dbusmenu, a floating a{sv}.
[[nodiscard]] GVariant *menuProperties(const MenuTree::Entry &entry, const PropertyFilter &filter,
                                       MenuIcons &icons);

/// The item with an id, which is there, and `depth` levels beneath it (negative: all): a floating (ia{sv}av).
[[nodiscard]] GVariant *menuLayout(const MenuTree &tree, MenuTree::Id id, int depth,
                                   const PropertyFilter &filter, MenuIcons &icons);

} // namespace fernhop::freedesktop
