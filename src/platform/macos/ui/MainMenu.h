#pragma once

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// The main menu, which is not visible: its items provide the keys for cutting, copying and pasting in the
/// dialogs' fields; autoreleased.
[[nodiscard]] NSMenu *makeMainMenu();

} // namespace fernhop::macos
