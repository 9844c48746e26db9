#include "macos/double/Recorder.h"

#import <Foundation/Foundation.h>

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

// GNUstep expects Info.plist elsewhere in a bundle. A Mac application has it in Contents, and an opened
// bundle caches it.
@interface FNBundle : NSBundle {
    NSString *_folder;
    NSDictionary *_information;
}
@end

@implementation FNBundle

- (instancetype)initWithPath:(NSString *)path {
    BOOL isFolder = NO;
    if (![[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&isFolder] || !isFolder) {
        [self release];
        return nil;
    }
    _folder = [path copy];
    NSString *file = [path stringByAppendingPathComponent:@"Contents/Info.plist"];
    NSData *data = [NSData dataWithContentsOfFile:file];
    id list =
        data ? [NSPropertyListSerialization propertyListWithData:data options:0 format:NULL error:NULL] : nil;
    _information = [list isKindOfClass:[NSDictionary class]] ? [list retain] : nil;
    return self;
}

- (void)dealloc {
    [_folder release];
    [_information release];
    [super dealloc];
}

- (NSDictionary *)infoDictionary {
    return _information;
}

- (NSString *)bundlePath {
    return _folder;
}

- (NSString *)bundleIdentifier {
    id identifier = [_information objectForKey:@"CFBundleIdentifier"];
    return [identifier isKindOfClass:[NSString class]] ? identifier : nil;
}

- (id)objectForInfoDictionaryKey:(NSString *)key {
    return [_information objectForKey:key];
}

- (NSURL *)URLForResource:(NSString *)name withExtension:(NSString *)extension {
    NSString *path = [[_folder stringByAppendingPathComponent:@"Contents/Resources"]
        stringByAppendingPathComponent:[name stringByAppendingPathExtension:extension]];
    return [[NSFileManager defaultManager] fileExistsAtPath:path] ? [NSURL fileURLWithPath:path] : nil;
}

@end

@implementation NSBundle (AsOnTheMac)

- (id)initWithURL:(NSURL *)url {
    [self release];
    return static_cast<id>([[FNBundle alloc] initWithPath:[url path]]);
}

+ (NSBundle *)mainBundle {
    const std::string &path = fernhop::macos_double::recorder().services.mainBundlePath;
    NSString *folder = path.empty() ? @"/" : [NSString stringWithUTF8String:path.c_str()];
    return [[[FNBundle alloc] initWithPath:folder] autorelease];
}

@end
