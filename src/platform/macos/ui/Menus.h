#pragma once

#include "platform/macos/ui/ActionTarget.h"
#include "platform/ui/MenuItem.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// The selector with this name; null for an empty name.
[[nodiscard]] SEL toSelector(ui::Selector selector);

/// A new item with all its attributes, represented object and submenu; autoreleased.
[[nodiscard]] NSMenuItem *toNSMenuItem(const ui::MenuItem &item, const ActionTarget &target);

/// A new menu, whose items the system enables automatically; autoreleased.
[[nodiscard]] NSMenu *toNSMenu(const ui::Menu &menu, const ActionTarget &target);

} // namespace fernhop::macos
