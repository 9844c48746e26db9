#pragma once

#include "platform/ui/Constraint.h"

#import <AppKit/AppKit.h>

#include <unordered_map>

namespace fernhop::macos {

/// Maps each view of the core to the view that shows it.
using ShownViews = std::unordered_map<const ui::View *, NSView *>;

/// The constraint between the views that show its views, which must be in `shown`; not active yet,
/// autoreleased.
[[nodiscard]] NSLayoutConstraint *toNSLayoutConstraint(const ui::Constraint &constraint,
                                                       const ShownViews &shown);

} // namespace fernhop::macos
