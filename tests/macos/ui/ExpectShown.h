#pragma once

#include "platform/ui/View.h"

#import <AppKit/NSView.h>

namespace fernhop::macos {

/// Expects that `shown` shows `view` and its subviews with all attributes and constraints.
void expectShown(NSView *shown, const ui::View &view);

/// The number of active constraints of a view and its subviews.
[[nodiscard]] unsigned countConstraints(NSView *view);

/// The view of this class at index `place` below `root` (in depth-first order); the test ends when there is
/// none.
[[nodiscard]] NSView *find(NSView *root, Class kind, unsigned place = 0);

} // namespace fernhop::macos
