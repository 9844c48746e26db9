#pragma once
#import <AppKit/NSTextFieldCell.h>

@interface NSSearchFieldCell : NSTextFieldCell {
    BOOL _sendsWholeSearchString;
    BOOL _sendsSearchStringImmediately;
}
@property BOOL sendsWholeSearchString;
@property BOOL sendsSearchStringImmediately;
@end
