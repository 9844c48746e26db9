#include "macos/double/Recorder.h"

#import <AppKit/NSApplication.h>

NSString *const NSApplicationDidFinishLaunchingNotification = @"NSApplicationDidFinishLaunchingNotification";
NSApplication *NSApp;

namespace {

void note(std::string step) {
    fernhop::macos_double::recorder().services.lifecycle.push_back(std::move(step));
}

} // namespace

@implementation NSApplication
@synthesize delegate = _delegate;
@synthesize mainMenu = _mainMenu;

+ (id)allocWithZone:(NSZone *)zone {
    return NSAllocateObject(self, 0, zone); // never released, and not in the ledger
}

+ (NSApplication *)sharedApplication {
    if (!NSApp) {
        NSApp = [[NSApplication alloc] init];
        NSApp->_activationPolicy = NSApplicationActivationPolicyProhibited;
    }
    return NSApp;
}

- (void)setDelegate:(id<NSApplicationDelegate>)delegate {
    _delegate = delegate;
    note("setDelegate:");
}

- (NSApplicationActivationPolicy)activationPolicy {
    return _activationPolicy;
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy {
    _activationPolicy = activationPolicy;
    note("setActivationPolicy: " + std::to_string(activationPolicy));
    return YES;
}

- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps {
    if (ignoreOtherApps)
        ++fernhop::macos_double::recorder().activations;
}

- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender {
    if (!action || ![target respondsToSelector:action])
        return NO;
    [target performSelector:action withObject:sender];
    return YES;
}

- (void)replyToOpenOrPrint:(NSApplicationDelegateReply)reply {
    note("opened " + std::to_string(reply));
}

- (void)run {
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    _ended = NO;
    note("run");
    if (const auto arrive = fernhop::macos_double::recorder().services.beforeLaunch)
        arrive();
    [_delegate
        applicationDidFinishLaunching:[NSNotification
                                          notificationWithName:NSApplicationDidFinishLaunchingNotification
                                                        object:self]];
    note("finished launching");
    if (const auto loop = fernhop::macos_double::recorder().services.mainLoop)
        loop();
    [pool release];
}

// The system's function ends the process; here the main loop returns to the test.
- (void)terminate:(id)sender {
    note(sender ? "terminate: sender" : "terminate: nil");
    const auto reply = [_delegate applicationShouldTerminate:self];
    note("reply " + std::to_string(reply));
    _ended = reply == NSTerminateNow;
}

@end
