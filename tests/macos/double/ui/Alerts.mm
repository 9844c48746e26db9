#include "macos/double/ui/System.h"

#import <AppKit/NSAlert.h>

@implementation NSWindow

@synthesize timesOrderedFront = _timesOrderedFront;
@synthesize contentView = _contentView;
@synthesize initialFirstResponder = _initialFirstResponder;

- (void)makeKeyAndOrderFront:(id)sender {
    ++_timesOrderedFront;
}

- (void)dealloc {
    [_contentView release];
    [super dealloc];
}

@end

@implementation NSAlert

@synthesize messageText = _messageText;
@synthesize informativeText = _informativeText;
@synthesize alertStyle = _alertStyle;
@synthesize accessoryView = _accessoryView;
@synthesize buttons = _buttons;
@synthesize window = _window;

- (instancetype)init {
    if ((self = [super init])) {
        _buttons = [NSMutableArray new];
        _window = [NSWindow new];
        NSView *content = [NSView new];
        _window.contentView = content;
        [content release];
    }
    return self;
}

- (NSButton *)addButtonWithTitle:(NSString *)title {
    NSButton *button = [NSButton buttonWithTitle:title target:nil action:nullptr];
    button.keyEquivalent = [_buttons count] == 0 ? @"\r" : @"";
    [_buttons addObject:button];
    return button;
}

- (NSModalResponse)runModal {
    auto &system = fernhop::macos_double::system();
    if (_accessoryView)
        [[_window contentView] addSubview:_accessoryView];
    system.openAlerts.push_back(self);
    const NSModalResponse response =
        system.user ? system.user(self) : NSAlertFirstButtonReturn + NSInteger([_buttons count]) - 1;
    system.openAlerts.pop_back();
    return response;
}

- (void)dealloc {
    [_messageText release];
    [_informativeText release];
    [_accessoryView release];
    [_buttons release];
    [_window release];
    [super dealloc];
}

@end
