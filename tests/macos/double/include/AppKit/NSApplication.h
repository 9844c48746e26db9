#pragma once
#import <AppKit/NSMenu.h>
#import <AppKit/NSResponder.h>
#import <AppKit/NSRunningApplication.h>

@class NSApplication;

typedef enum NSApplicationTerminateReply : NSUInteger {
    NSTerminateCancel = 0,
    NSTerminateNow = 1,
    NSTerminateLater = 2,
} NSApplicationTerminateReply;

typedef enum NSApplicationDelegateReply : NSUInteger {
    NSApplicationDelegateReplySuccess = 0,
    NSApplicationDelegateReplyCancel = 1,
    NSApplicationDelegateReplyFailure = 2,
} NSApplicationDelegateReply;

extern NSString *const NSApplicationDidFinishLaunchingNotification;

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification *)notification;
- (void)application:(NSApplication *)sender openFiles:(NSArray<NSString *> *)filenames;
- (BOOL)applicationShouldHandleReopen:(NSApplication *)sender hasVisibleWindows:(BOOL)hasVisibleWindows;
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication *)sender;
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication *)sender;
@end

@interface NSApplication : NSResponder {
    id<NSApplicationDelegate> _delegate;
    NSMenu *_mainMenu;
    NSApplicationActivationPolicy _activationPolicy;
    BOOL _ended;
}
@property(class, readonly, strong) NSApplication *sharedApplication;
@property(nonatomic, assign) id<NSApplicationDelegate> delegate;
@property(strong) NSMenu *mainMenu;
- (NSApplicationActivationPolicy)activationPolicy;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender;
- (void)replyToOpenOrPrint:(NSApplicationDelegateReply)reply;
- (void)run;
- (void)terminate:(id)sender;
@end

extern "C" NSApplication *NSApp;
