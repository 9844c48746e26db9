#include "macos/double/Recorder.h"

#import <AppKit/NSSound.h>

namespace fernhop::macos_double {

Recorder &recorder() {
    static Recorder instance;
    return instance;
}

} // namespace fernhop::macos_double

void NSBeep(void) {
    ++fernhop::macos_double::recorder().beeps;
}
