#pragma once
#import <AppKit/NSCell.h>

typedef NS_ENUM(NSUInteger, NSBezelStyle) {
    NSBezelStyleRounded = 1,
};
