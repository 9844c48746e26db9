#pragma once
#import <AppKit/NSImage.h>

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace *sharedWorkspace;
- (NSImage *)iconForFile:(NSString *)fullPath;
@end
