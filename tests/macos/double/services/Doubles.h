#pragma once

/// Resets the state of the services that is not in the recorder.
namespace fernhop::macos_double {

void resetUserDefaults();
void resetNotificationCentres();
void resetAppleEvents();

} // namespace fernhop::macos_double
