#pragma once

#include "platform/ui/Drawing.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// An image of this size that draws the paths each time it shows, at the screen's own density; autoreleased.
[[nodiscard]] NSImage *imageOfDrawing(const ui::Drawing &drawing, NSSize size);

} // namespace fernhop::macos
