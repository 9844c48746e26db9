#pragma once

#include "platform/ui/Constraint.h"

#import <AppKit/AppKit.h>

#include <unordered_map>

namespace fernhop::macos {

/// By the views of the core, what shows them.
using ShownViews = std::unordered_map<const ui::View *, NSView *>;

/// The same constraint between what shows its views, which must be among `shown`; not active yet,
/// autoreleased.
[[nodiscard]] NSLayoutConstraint *toNSLayoutConstraint(const ui::Constraint &constraint,
                                                       const ShownViews &shown);

} // namespace fernhop::macos
