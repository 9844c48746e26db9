#pragma once
#import <AppKit/NSButton.h>
#import <AppKit/NSMenu.h>

@interface NSPopUpButton : NSButton {
    NSInteger _indexOfSelectedItem;
    NSMenu *_menu;
}
- (instancetype)initWithFrame:(NSRect)buttonFrame pullsDown:(BOOL)flag;
@property(strong) NSMenu *menu;
@property(readonly) NSInteger numberOfItems;
@property(readonly, copy) NSArray<NSMenuItem *> *itemArray;
@property(readonly, strong) NSMenuItem *selectedItem;
@property(readonly) NSInteger indexOfSelectedItem;
- (void)removeAllItems;
- (void)selectItemAtIndex:(NSInteger)index;
@end
