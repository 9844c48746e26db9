#pragma once

#include "platform/ui/View.h"

#import <AppKit/NSView.h>

namespace fernhop::macos {

/// Expects that `shown` shows `view` and everything beneath it, attribute for attribute and constraint for
/// constraint.
void expectShown(NSView *shown, const ui::View &view);

/// How many constraints are active among a view and those beneath it.
[[nodiscard]] unsigned countConstraints(NSView *view);

/// Of the views beneath `root` (in their order, each before those beneath it) that are of this class, the one
/// at `place`; the test ends when there is none.
[[nodiscard]] NSView *find(NSView *root, Class kind, unsigned place = 0);

} // namespace fernhop::macos
