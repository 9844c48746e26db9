#pragma once

#include "platform/ui/Color.h"
#include "platform/ui/Font.h"
#include "platform/ui/View.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// The system's colour for this role, which follows the appearance in which it is drawn; autoreleased.
[[nodiscard]] NSColor *toNSColor(const ui::Color &color);

/// The system's font; autoreleased.
[[nodiscard]] NSFont *toNSFont(const ui::Font &font);

/// Gives `view` this layer, in the colours of the view's current appearance.
void paintLayer(NSView *view, const ui::Layer &layer);

} // namespace fernhop::macos
