#pragma once
#import <AppKit/NSCell.h>

@interface NSActionCell : NSCell
@end
