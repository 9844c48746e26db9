#pragma once
#import <AppKit/NSResponder.h>

@interface NSApplication : NSResponder
@property(class, readonly, strong) NSApplication *sharedApplication;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender;
@end

extern "C" NSApplication *NSApp;
