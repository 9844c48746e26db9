#include "platform/macos/SystemApplication.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

void SystemApplication::setActivationPolicy(ActivationPolicy policy) {
    [[NSApplication sharedApplication]
        setActivationPolicy:static_cast<NSApplicationActivationPolicy>(policy)];
}

void SystemApplication::terminate() {
    [[NSApplication sharedApplication] terminate:nil];
}

} // namespace fernhop::macos
