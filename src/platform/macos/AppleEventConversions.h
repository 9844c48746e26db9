#pragma once

#include "platform/LinkEvents.h"

#import <Foundation/Foundation.h>

namespace fernhop::macos {

/// The event with its direct object, the one parameter that a link comes in.
[[nodiscard]] LinkEventDescriptor fromAppleEvent(NSAppleEventDescriptor *event);

} // namespace fernhop::macos
