#pragma once

#include "macos/double/Inspection.h"

#import <AppKit/NSAlert.h>
#import <AppKit/NSAppearance.h>
#import <AppKit/NSStatusItem.h>

#include <string>
#include <vector>

namespace fernhop::macos_double {

/// The global state of the double.
struct System {
    NSAppearanceName appearance = NSAppearanceNameAqua;
    std::vector<NSStatusItem *> statusItems; ///< retained by their creators
    std::vector<NSAlert *> openAlerts;       ///< the last one in front
    User user;
    std::vector<std::string> drawingLog; ///< the steps of the last drawing
};

[[nodiscard]] System &system();

} // namespace fernhop::macos_double
