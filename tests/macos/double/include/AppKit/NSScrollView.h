#pragma once
#import <AppKit/NSView.h>

typedef NS_ENUM(NSUInteger, NSBorderType) {
    NSNoBorder = 0,
    NSLineBorder = 1,
    NSBezelBorder = 2,
    NSGrooveBorder = 3,
};

@interface NSScrollView : NSView {
    NSView *_documentView;
    NSBorderType _borderType;
    BOOL _hasVerticalScroller;
}
@property(strong) NSView *documentView;
@property NSBorderType borderType;
@property BOOL hasVerticalScroller;
@end
