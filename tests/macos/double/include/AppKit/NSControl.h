#pragma once
#import <AppKit/NSCell.h>
#import <AppKit/NSFont.h>
#import <AppKit/NSParagraphStyle.h>
#import <AppKit/NSText.h>
#import <AppKit/NSView.h>

@interface NSControl : NSView {
    id _target;
    SEL _action;
    BOOL _enabled;
    NSControlSize _controlSize;
    NSCell *_cell;
    NSString *_stringValue;
    NSFont *_font;
    NSTextAlignment _alignment;
    NSLineBreakMode _lineBreakMode;
}
@property(assign) id target;
@property SEL action;
@property(getter=isEnabled) BOOL enabled;
@property NSControlSize controlSize;
@property(strong) NSCell *cell;
@property(copy) NSString *stringValue;
@property(strong) NSFont *font;
@property NSTextAlignment alignment;
@property NSLineBreakMode lineBreakMode;
- (BOOL)sendAction:(SEL)action to:(id)target;
@end

@protocol NSControlTextEditingDelegate <NSObject>
@optional
- (void)controlTextDidChange:(NSNotification *)notification;
@end
