#pragma once
#import <AppKit/NSView.h>

@interface NSTableHeaderView : NSView
@end
