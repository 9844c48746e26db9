#include "macos/double/Recorder.h"

#import <AppKit/NSSound.h>

void NSBeep(void) {
    ++fernhop::macos_double::recorder().beeps;
}
