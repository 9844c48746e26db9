#include "macos/double/Inspection.h"
#include "macos/double/Recorder.h"

#import <AppKit/NSApplication.h>
#import <AppKit/NSWorkspace.h>

NSApplication *NSApp = nil;

@implementation NSApplication

+ (id)allocWithZone:(NSZone *)zone {
    return NSAllocateObject(self, 0, zone); // it stays, and is in no ledger
}

+ (NSApplication *)sharedApplication {
    if (!NSApp)
        NSApp = [self new];
    return NSApp;
}

- (void)activateIgnoringOtherApps:(BOOL)flag {
    ++fernhop::macos_double::recorder().activations;
}

- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender {
    if (!action || ![target respondsToSelector:action])
        return NO;
    [target performSelector:action withObject:sender];
    return YES;
}

@end

@implementation NSWorkspace

+ (NSWorkspace *)sharedWorkspace {
    static NSWorkspace *const workspace = [self new];
    return workspace;
}

- (NSImage *)iconForFile:(NSString *)fullPath {
    ++fernhop::macos_double::recorder().iconsAsked;
    return fernhop::macos_double::imageOfOrigin([@"icon " stringByAppendingString:fullPath]);
}

@end
