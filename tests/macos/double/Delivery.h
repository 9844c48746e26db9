#pragma once

#import <Foundation/Foundation.h>

namespace fernhop::macos_double {

/// Sends an action as the application does; whether the target took it.
bool sendAction(SEL action, id target, id sender);

} // namespace fernhop::macos_double
