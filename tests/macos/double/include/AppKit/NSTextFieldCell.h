#pragma once
#import <AppKit/NSActionCell.h>

@interface NSTextFieldCell : NSActionCell
@end
