#include "macos/double/Inspection.h"
#include "macos/double/Recorder.h"
#include "macos/double/services/Doubles.h"

#import <AppKit/NSWorkspace.h>

#include <thread>

NSString *const NSWorkspaceDidActivateApplicationNotification =
    @"NSWorkspaceDidActivateApplicationNotification";
NSString *const NSWorkspaceApplicationKey = @"NSWorkspaceApplicationKey";

namespace {

using fernhop::macos_double::recorder;

NSNotificationCenter *workspaceCentre;

std::string utf8(NSString *string) {
    return string ? [string UTF8String] : "";
}

NSString *string(const std::string &text) {
    return [NSString stringWithUTF8String:text.c_str()];
}

} // namespace

void fernhop::macos_double::resetNotificationCentres() {
    [workspaceCentre release];
    workspaceCentre = nil;
}

@implementation NSRunningApplication
@synthesize bundleIdentifier = _bundleIdentifier;
+ (NSRunningApplication *)applicationWithIdentifier:(NSString *)identifier {
    NSRunningApplication *application = [[[self alloc] init] autorelease];
    application->_bundleIdentifier = [identifier copy];
    return application;
}
- (void)dealloc {
    [_bundleIdentifier release];
    [super dealloc];
}
@end

@implementation NSWorkspaceOpenConfiguration
@synthesize activates = _activates;
+ (instancetype)configuration {
    NSWorkspaceOpenConfiguration *configuration = [[[self alloc] init] autorelease];
    [configuration setActivates:YES];
    return configuration;
}
@end

@implementation NSWorkspace

+ (NSWorkspace *)sharedWorkspace {
    static NSWorkspace *shared = [[NSWorkspace alloc] init];
    return shared;
}

- (NSNotificationCenter *)notificationCenter {
    if (!workspaceCentre)
        workspaceCentre = [[NSNotificationCenter alloc] init];
    return workspaceCentre;
}

- (NSRunningApplication *)frontmostApplication {
    const auto &front = recorder().services.frontmost;
    if (!front)
        return nil;
    return [NSRunningApplication applicationWithIdentifier:*front ? string(**front) : nil];
}

- (NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)bundleIdentifier {
    const auto &applications = recorder().services.applications;
    const auto found = applications.find(utf8(bundleIdentifier));
    return found == applications.end() ? nil : [NSURL fileURLWithPath:string(found->second) isDirectory:YES];
}

- (NSImage *)iconForFile:(NSString *)fullPath {
    ++recorder().iconsAsked;
    return fernhop::macos_double::imageOfOrigin([@"icon " stringByAppendingString:fullPath]);
}

- (BOOL)openURL:(NSURL *)url {
    recorder().services.openedByDefault.push_back(utf8([url absoluteString]));
    return !recorder().services.openError;
}

- (void)openURLs:(NSArray *)urls
    withApplicationAtURL:(NSURL *)applicationURL
           configuration:(NSWorkspaceOpenConfiguration *)configuration
       completionHandler:(void (^)(NSRunningApplication *, NSError *))completionHandler {
    auto &services = recorder().services;
    fernhop::macos_double::OpenCall call{
        {}, utf8([applicationURL absoluteString]), [configuration activates] == YES};
    for (NSURL *url in urls)
        call.urls.push_back(utf8([url absoluteString]));
    if (!services.openError)
        services.opened.push_back(std::move(call));
    const auto failure = services.openError;
    auto completion = Block_copy(completionHandler);
    // On another queue, as in the system; the double waits for it, so tests need not.
    std::thread([completion, failure] {
        GSRegisterCurrentThread();
        NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
        NSDictionary *information = failure ? [NSDictionary dictionaryWithObject:string(*failure)
                                                                          forKey:NSLocalizedDescriptionKey]
                                            : nil;
        NSError *error =
            failure ? [NSError errorWithDomain:NSCocoaErrorDomain code:256 userInfo:information] : nil;
        completion(failure ? nil : [NSRunningApplication applicationWithIdentifier:nil], error);
        [pool release];
        GSUnregisterCurrentThread();
    }).join();
    Block_release(completion);
}

@end
