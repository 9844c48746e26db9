#pragma once

#import <Foundation/Foundation.h>

#include <string>

namespace fernhop::macos_double {

/// Delivers an event like the system; false when it has no handler.
bool deliverAppleEvent(AEEventClass eventClass, AEEventID eventID, NSAppleEventDescriptor *event);

/// Delivers a GetURL event with this text; false when it has no handler.
bool deliverLink(const std::string &link);

} // namespace fernhop::macos_double
