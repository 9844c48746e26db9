#pragma once

#import <Foundation/Foundation.h>

#include <string>

namespace fernhop::macos_double {

/// Delivers an event as the system does; false when nobody handles events of its kind.
bool deliverAppleEvent(AEEventClass eventClass, AEEventID eventID, NSAppleEventDescriptor *event);

/// Delivers a GetURL event with this text; false when nobody handles such events.
bool deliverLink(const std::string &link);

} // namespace fernhop::macos_double
