#pragma once
#import <AppKit/NSView.h>

@interface NSTableCellView : NSView
@end
