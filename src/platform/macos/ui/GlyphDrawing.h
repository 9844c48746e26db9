#pragma once

#include "platform/ui/Drawing.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// An image of this size that draws the paths whenever it is shown, at the screen's resolution; autoreleased.
[[nodiscard]] NSImage *imageOfDrawing(const ui::Drawing &drawing, NSSize size);

} // namespace fernhop::macos
