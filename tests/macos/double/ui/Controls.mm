#include "macos/double/UserActions.h"

#import <AppKit/NSApplication.h>
#import <AppKit/NSButton.h>
#import <AppKit/NSImageView.h>
#import <AppKit/NSSearchField.h>

@implementation NSCell
@synthesize scrollable = _scrollable;
@end

@implementation NSActionCell
@end

@implementation NSTextFieldCell
@end

@implementation NSSearchFieldCell

@synthesize sendsWholeSearchString = _sendsWholeSearchString;
@synthesize sendsSearchStringImmediately = _sendsSearchStringImmediately;

@end

@implementation NSControl

@synthesize target = _target;
@synthesize action = _action;
@synthesize enabled = _enabled;
@synthesize controlSize = _controlSize;
@synthesize cell = _cell;
@synthesize stringValue = _stringValue;
@synthesize font = _font;
@synthesize alignment = _alignment;
@synthesize lineBreakMode = _lineBreakMode;

- (instancetype)initWithFrame:(NSRect)frameRect {
    if ((self = [super initWithFrame:frameRect])) {
        _enabled = YES;
        _alignment = NSTextAlignmentNatural;
        _lineBreakMode = NSLineBreakByClipping;
        _stringValue = @"";
    }
    return self;
}

- (BOOL)sendAction:(SEL)action to:(id)target {
    return [[NSApplication sharedApplication] sendAction:action to:target from:self];
}

- (void)dealloc {
    [_cell release];
    [_stringValue release];
    [_font release];
    [super dealloc];
}

@end

@implementation NSControl (UserActions)

- (BOOL)userClicks {
    return [self isEnabled] && [self sendAction:[self action] to:[self target]];
}

@end

@implementation NSTextField

@synthesize placeholderString = _placeholderString;
@synthesize textColor = _textColor;
@synthesize editable = _editable;
@synthesize maximumNumberOfLines = _maximumNumberOfLines;
@synthesize delegate = _delegate;

+ (instancetype)labelWithString:(NSString *)stringValue {
    NSTextField *label = [[self new] autorelease];
    label.editable = NO;
    label.stringValue = stringValue;
    return label;
}

- (instancetype)initWithFrame:(NSRect)frameRect {
    if ((self = [super initWithFrame:frameRect])) {
        _editable = YES;
        NSCell *cell = [NSTextFieldCell new];
        self.cell = cell;
        [cell release];
    }
    return self;
}

- (void)setStringValue:(NSString *)text {
    if (!text)
        [NSException raise:NSInvalidArgumentException format:@"a text field shows a string"];
    [super setStringValue:text];
}

- (void)dealloc {
    [_placeholderString release];
    [_textColor release];
    [super dealloc];
}

@end

@implementation NSTextField (UserActions)

- (BOOL)userTypes:(NSString *)text {
    [self setStringValue:text];
    if ([_delegate respondsToSelector:@selector(controlTextDidChange:)])
        [_delegate
            controlTextDidChange:[NSNotification notificationWithName:@"NSControlTextDidChangeNotification"
                                                               object:self]];
    NSCell *cell = [self cell];
    return [cell isKindOfClass:[NSSearchFieldCell class]] &&
           [static_cast<NSSearchFieldCell *>(cell) sendsSearchStringImmediately] && [self userClicks];
}

@end

@implementation NSSearchField

@dynamic delegate;

- (instancetype)initWithFrame:(NSRect)frameRect {
    if ((self = [super initWithFrame:frameRect])) {
        NSSearchFieldCell *cell = [NSSearchFieldCell new];
        cell.sendsWholeSearchString = YES;
        self.cell = cell;
        [cell release];
    }
    return self;
}

@end

@implementation NSButton

@synthesize title = _title;
@synthesize bezelStyle = _bezelStyle;
@synthesize state = _state;
@synthesize image = _image;
@synthesize imagePosition = _imagePosition;
@synthesize keyEquivalent = _keyEquivalent;

+ (instancetype)buttonWithTitle:(NSString *)title target:(id)target action:(SEL)action {
    NSButton *button = [[self new] autorelease];
    button.title = title;
    button.target = target;
    button.action = action;
    button.bezelStyle = NSBezelStyleRounded;
    return button;
}

- (void)dealloc {
    [_title release];
    [_image release];
    [_keyEquivalent release];
    [super dealloc];
}

@end

@implementation NSImageView

@synthesize image = _image;
@synthesize imageScaling = _imageScaling;
@synthesize contentTintColor = _contentTintColor;

- (void)dealloc {
    [_image release];
    [_contentTintColor release];
    [super dealloc];
}

@end
