#pragma once
#import <AppKit/NSMenuItem.h>
#import <double/CountedObject.h>

@interface NSMenu : FNCountedObject {
    NSMutableArray *_items;
    NSString *_title;
    BOOL _autoenablesItems;
}
- (instancetype)initWithTitle:(NSString *)title;
@property(copy) NSString *title;
@property BOOL autoenablesItems;
@property(copy) NSArray<NSMenuItem *> *itemArray;
@property(readonly) NSInteger numberOfItems;
- (void)addItem:(NSMenuItem *)newItem;
- (void)removeAllItems;
- (NSMenuItem *)itemAtIndex:(NSInteger)index;
/// Enables the items by their targets if that is automatic, as before a menu is shown.
- (void)update;
@end
