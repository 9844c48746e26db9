#pragma once

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// The menu of an application that shows none: by its items the keys for cutting, copying and pasting reach
/// the fields of the dialogs, which know no such keys themselves; autoreleased.
[[nodiscard]] NSMenu *makeMainMenu();

} // namespace fernhop::macos
