#pragma once
#import <AppKit/NSSearchFieldCell.h>
#import <AppKit/NSTextField.h>

@protocol NSSearchFieldDelegate <NSTextFieldDelegate>
@end

@interface NSSearchField : NSTextField
@property(assign) id<NSSearchFieldDelegate> delegate;
@end
