#include "platform/macos/SystemSound.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

void SystemSound::beep() {
    NSBeep();
}

} // namespace fernhop::macos
