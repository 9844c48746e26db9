#pragma once
#import <AppKit/NSCell.h>
#import <AppKit/NSImage.h>
#import <double/CountedObject.h>

@class NSMenu;

@interface NSMenuItem : FNCountedObject {
    BOOL _separatorItem;
    NSMenu *_menu;
    NSMenu *_submenu;
    NSString *_title;
    NSString *_keyEquivalent;
    NSImage *_image;
    NSControlStateValue _state;
    BOOL _enabled;
    id _target;
    SEL _action;
    id _representedObject;
}
+ (NSMenuItem *)separatorItem;
- (instancetype)initWithTitle:(NSString *)string action:(SEL)selector keyEquivalent:(NSString *)charCode;
@property(assign) NSMenu *menu;
@property(strong) NSMenu *submenu;
@property(readonly, getter=isSeparatorItem) BOOL separatorItem;
@property(copy) NSString *title;
@property(copy) NSString *keyEquivalent;
@property(strong) NSImage *image;
@property NSControlStateValue state;
@property(getter=isEnabled) BOOL enabled;
@property(assign) id target;
@property SEL action;
@property(strong) id representedObject;
@end
