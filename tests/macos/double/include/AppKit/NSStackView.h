#pragma once
#import <AppKit/NSUserInterfaceLayout.h>
#import <AppKit/NSView.h>

@interface NSStackView : NSView {
    NSUserInterfaceLayoutOrientation _orientation;
    NSLayoutAttribute _alignment;
    CGFloat _spacing;
}
+ (instancetype)stackViewWithViews:(NSArray<NSView *> *)views;
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property CGFloat spacing;
@property(copy, readonly) NSArray<NSView *> *arrangedSubviews;
@end
