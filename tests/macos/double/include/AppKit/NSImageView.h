#pragma once
#import <AppKit/NSColor.h>
#import <AppKit/NSControl.h>
#import <AppKit/NSImage.h>

@interface NSImageView : NSControl {
    NSImage *_image;
    NSImageScaling _imageScaling;
    NSColor *_contentTintColor;
}
@property(strong) NSImage *image;
@property NSImageScaling imageScaling;
@property(copy) NSColor *contentTintColor;
@end
