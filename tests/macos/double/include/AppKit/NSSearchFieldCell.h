#pragma once
#import <AppKit/NSCell.h>

@interface NSSearchFieldCell : NSCell {
    BOOL _sendsWholeSearchString;
    BOOL _sendsSearchStringImmediately;
}
@property BOOL sendsWholeSearchString;
@property BOOL sendsSearchStringImmediately;
@end
