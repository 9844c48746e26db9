#pragma once

#include "platform/macos/ui/ActionTarget.h"
#include "platform/ui/MenuItem.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// The selector of this name; null for an empty one.
[[nodiscard]] SEL toSelector(ui::Selector selector);

/// A new item with all it shows and carries, its submenu included; autoreleased.
[[nodiscard]] NSMenuItem *toNSMenuItem(const ui::MenuItem &item, const ActionTarget &target);

/// A new menu, whose items are enabled in the system's own manner; autoreleased.
[[nodiscard]] NSMenu *toNSMenu(const ui::Menu &menu, const ActionTarget &target);

} // namespace fernhop::macos
