#pragma once
#import <AppKit/NSButtonCell.h>
#import <AppKit/NSControl.h>
#import <AppKit/NSImage.h>

@interface NSButton : NSControl {
    NSString *_title;
    NSBezelStyle _bezelStyle;
    NSControlStateValue _state;
    NSImage *_image;
    NSCellImagePosition _imagePosition;
    NSString *_keyEquivalent;
}
+ (instancetype)buttonWithTitle:(NSString *)title target:(id)target action:(SEL)action;
@property(copy) NSString *title;
@property NSBezelStyle bezelStyle;
@property NSControlStateValue state;
@property(strong) NSImage *image;
@property NSCellImagePosition imagePosition;
@property(copy) NSString *keyEquivalent;
@end
