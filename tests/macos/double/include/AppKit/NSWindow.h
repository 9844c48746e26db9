#pragma once
#import <AppKit/NSView.h>

@interface NSWindow : NSResponder {
    int _timesOrderedFront;
    NSView *_contentView;
    NSView *_initialFirstResponder;
}
@property(strong) NSView *contentView;
@property(assign) NSView *initialFirstResponder;
/// How often it was brought to the front; only in the double.
@property(readonly) int timesOrderedFront;
- (void)makeKeyAndOrderFront:(id)sender;
@end
