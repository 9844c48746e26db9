#pragma once
#import <AppKit/NSColor.h>
#import <AppKit/NSControl.h>

@protocol NSTextFieldDelegate <NSControlTextEditingDelegate>
@end

@interface NSTextField : NSControl {
    NSString *_placeholderString;
    NSColor *_textColor;
    BOOL _editable;
    NSInteger _maximumNumberOfLines;
    id<NSTextFieldDelegate> _delegate;
}
+ (instancetype)labelWithString:(NSString *)stringValue;
@property(copy) NSString *placeholderString;
@property(copy) NSColor *textColor;
@property(getter=isEditable) BOOL editable;
@property NSInteger maximumNumberOfLines;
@property(assign) id<NSTextFieldDelegate> delegate;
@end
