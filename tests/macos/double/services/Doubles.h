#pragma once

/// What the doubles of the services keep beside the recorder, made anew.
namespace fernhop::macos_double {

void resetUserDefaults();
void resetNotificationCentres();
void resetAppleEvents();

} // namespace fernhop::macos_double
