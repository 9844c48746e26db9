#pragma once
#import <AppKit/NSImage.h>
#import <AppKit/NSRunningApplication.h>

@interface NSWorkspaceOpenConfiguration : NSObject {
    BOOL _activates;
}
@property BOOL activates;
+ (instancetype)configuration;
@end

extern NSString *const NSWorkspaceDidActivateApplicationNotification;
extern NSString *const NSWorkspaceApplicationKey;

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace *sharedWorkspace;
@property(readonly, strong) NSNotificationCenter *notificationCenter;
@property(readonly, strong) NSRunningApplication *frontmostApplication;
- (NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)bundleIdentifier;
- (BOOL)openURL:(NSURL *)url;
- (void)openURLs:(NSArray *)urls
    withApplicationAtURL:(NSURL *)applicationURL
           configuration:(NSWorkspaceOpenConfiguration *)configuration
       completionHandler:(void (^)(NSRunningApplication *application, NSError *error))completionHandler;
- (NSImage *)iconForFile:(NSString *)fullPath;
@end
