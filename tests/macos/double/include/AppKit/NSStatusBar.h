#pragma once
#import <AppKit/NSStatusItem.h>
#import <double/CountedObject.h>

static const CGFloat NSSquareStatusItemLength = -2.0;

@interface NSStatusBar : FNCountedObject
+ (NSStatusBar *)systemStatusBar;
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem *)item;
@end
