#include "macos/double/Recorder.h"

#include "macos/double/services/Doubles.h"

namespace fernhop::macos_double {

Recorder &recorder() {
    static Recorder instance;
    return instance;
}

void reset() {
    recorder() = {};
    resetUserDefaults();
    resetNotificationCentres();
    resetAppleEvents();
}

} // namespace fernhop::macos_double
