#pragma once

#include "platform/LinkEvents.h"

#import <Foundation/Foundation.h>

namespace fernhop::macos {

/// The event with its direct object, the only parameter that contains a link.
[[nodiscard]] LinkEventDescriptor fromAppleEvent(NSAppleEventDescriptor *event);

} // namespace fernhop::macos
