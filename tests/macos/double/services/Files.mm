#include "macos/double/Recorder.h"

#import <Foundation/Foundation.h>
#include <dirent.h>

#include <filesystem>

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

namespace {

using Walk = std::filesystem::recursive_directory_iterator;

bool mayBeRead(NSURL *folder) {
    DIR *opened = [folder isFileURL] ? opendir([[folder path] UTF8String]) : nullptr;
    return opened != nullptr && closedir(opened) == 0;
}

} // namespace

/// Enumerates a folder as URLs, which GNUstep's enumerator does not.
@interface FNUrlEnumerator : NSEnumerator {
    Walk _next;
    BOOL _started;
    BOOL _skipsHidden;
}
- (instancetype)initWithFolder:(NSString *)folder options:(NSDirectoryEnumerationOptions)options;
@end

@implementation FNUrlEnumerator

- (instancetype)initWithFolder:(NSString *)folder options:(NSDirectoryEnumerationOptions)options {
    self = [super init];
    _next = Walk([folder UTF8String], std::filesystem::directory_options::skip_permission_denied);
    _skipsHidden = (options & NSDirectoryEnumerationSkipsHiddenFiles) != 0;
    return self;
}

- (id)nextObject {
    if (_started && _next != Walk())
        ++_next;
    _started = YES;
    for (; _next != Walk(); ++_next) {
        if (!_skipsHidden || !_next->path().filename().string().starts_with("."))
            return [NSURL fileURLWithPath:[NSString stringWithUTF8String:_next->path().c_str()]
                              isDirectory:_next->is_directory()];
        _next.disable_recursion_pending();
    }
    return nil;
}

- (void)skipDescendants {
    if (_started && _next != Walk())
        _next.disable_recursion_pending();
}

@end

@implementation NSFileManager (AsOnTheMac)

- (NSURL *)homeDirectoryForCurrentUser {
    NSString *path =
        [NSString stringWithUTF8String:fernhop::macos_double::recorder().services.homePath.c_str()];
    return [NSURL fileURLWithPath:path isDirectory:YES];
}

- (NSDirectoryEnumerator *)enumeratorAtURL:(NSURL *)url
                includingPropertiesForKeys:(NSArray *)keys
                                   options:(NSDirectoryEnumerationOptions)options
                              errorHandler:(GSDirEnumErrorHandler)handler {
    (void)keys;
    (void)handler;
    if (!mayBeRead(url))
        return nil;
    return static_cast<id>([[[FNUrlEnumerator alloc] initWithFolder:[url path] options:options] autorelease]);
}

@end
