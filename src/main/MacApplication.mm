#include "main/MacApplication.h"

#include "main/MacDelegate.h"
#include "platform/macos/Reference.h"
#include "platform/macos/ui/MainMenu.h"

namespace fernhop::macos {

namespace {

/// The two objects that live as long as the process and are never destroyed.
struct Process {
    Reference<NSApplication> application;
    Reference<FernhopAppDelegate> delegate;
};

Process &process() {
    static auto &instance = *new Process;
    return instance;
}

} // namespace

int runApplication() {
    @autoreleasepool {
        // The previous delegate is released before the next is made, since each receives the events of the
        // process.
        process() = {};
        auto &[application, delegate] = process();
        application = Reference<NSApplication>([NSApplication sharedApplication]);
        delegate = Reference<FernhopAppDelegate>::adopting([[FernhopAppDelegate alloc] init]);
        [application.get() setDelegate:delegate.get()];
        [application.get() setMainMenu:makeMainMenu()];
        [application.get() run];
    }
    return 0;
}

} // namespace fernhop::macos
