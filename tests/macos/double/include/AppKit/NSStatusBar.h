#pragma once
#import <AppKit/NSStatusItem.h>

static const CGFloat NSSquareStatusItemLength = -2.0;

@interface NSStatusBar : NSObject
+ (NSStatusBar *)systemStatusBar;
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem *)item;
@end
