#pragma once

#include "macos/double/Inspection.h"

#import <AppKit/NSAlert.h>
#import <AppKit/NSAppearance.h>
#import <AppKit/NSStatusItem.h>

#include <string>
#include <vector>

namespace fernhop::macos_double {

/// What the whole of the double's system knows.
struct System {
    NSAppearanceName appearance = NSAppearanceNameAqua;
    std::vector<NSStatusItem *> statusItems; ///< retained by those who made them
    std::vector<NSAlert *> openAlerts;       ///< the last one in front
    User user;
    std::vector<std::string> drawingLog; ///< what was drawn last, step by step
};

[[nodiscard]] System &system();

} // namespace fernhop::macos_double
