#pragma once
#import <AppKit/NSButton.h>
#import <AppKit/NSWindow.h>

typedef NSInteger NSModalResponse;
static const NSModalResponse NSAlertFirstButtonReturn = 1000;

typedef NS_ENUM(NSUInteger, NSAlertStyle) {
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1,
    NSAlertStyleCritical = 2,
};

@interface NSAlert : FNCountedObject {
    NSMutableArray *_buttons;
    NSWindow *_window;
    NSString *_messageText;
    NSString *_informativeText;
    NSAlertStyle _alertStyle;
    NSView *_accessoryView;
}
@property(copy) NSString *messageText;
@property(copy) NSString *informativeText;
@property NSAlertStyle alertStyle;
@property(strong) NSView *accessoryView;
@property(readonly, copy) NSArray<NSButton *> *buttons;
@property(readonly, strong) NSWindow *window;
- (NSButton *)addButtonWithTitle:(NSString *)title;
- (NSModalResponse)runModal;
@end
