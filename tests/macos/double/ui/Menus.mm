#include "macos/double/UserActions.h"

#import <AppKit/NSApplication.h>
#import <AppKit/NSMenu.h>
#import <AppKit/NSPopUpButton.h>

@implementation NSMenu

@synthesize title = _title;
@synthesize autoenablesItems = _autoenablesItems;

- (instancetype)init {
    return [self initWithTitle:@""];
}

- (instancetype)initWithTitle:(NSString *)title {
    if ((self = [super init])) {
        _title = [title copy];
        _items = [NSMutableArray new];
        _autoenablesItems = YES;
    }
    return self;
}

- (NSArray *)itemArray {
    return [[_items copy] autorelease];
}

- (void)setItemArray:(NSArray *)items {
    [self removeAllItems];
    for (NSMenuItem *item in items)
        [self addItem:item];
}

- (NSInteger)numberOfItems {
    return static_cast<NSInteger>([_items count]);
}

- (void)addItem:(NSMenuItem *)newItem {
    if ([newItem menu])
        [NSException raise:NSInternalInconsistencyException format:@"the item is in another menu"];
    [_items addObject:newItem];
    newItem.menu = self;
}

- (void)removeAllItems {
    for (NSMenuItem *item in _items)
        item.menu = nil;
    [_items removeAllObjects];
}

- (NSMenuItem *)itemAtIndex:(NSInteger)index {
    return [_items objectAtIndex:static_cast<NSUInteger>(index)];
}

- (void)update {
    if (_autoenablesItems)
        for (NSMenuItem *item in _items)
            item.enabled =
                [item submenu] || ([item action] && [[item target] respondsToSelector:[item action]]);
}

- (void)dealloc {
    for (NSMenuItem *item in _items)
        item.menu = nil;
    [_title release];
    [_items release];
    [super dealloc];
}

@end

@implementation NSMenuItem

@synthesize menu = _menu;
@synthesize submenu = _submenu;
@synthesize separatorItem = _separatorItem;
@synthesize title = _title;
@synthesize keyEquivalent = _keyEquivalent;
@synthesize image = _image;
@synthesize state = _state;
@synthesize enabled = _enabled;
@synthesize target = _target;
@synthesize action = _action;
@synthesize representedObject = _representedObject;

+ (NSMenuItem *)separatorItem {
    NSMenuItem *item = [[self new] autorelease];
    item->_separatorItem = YES;
    return item;
}

- (instancetype)init {
    return [self initWithTitle:@"" action:nullptr keyEquivalent:@""];
}

- (instancetype)initWithTitle:(NSString *)string action:(SEL)selector keyEquivalent:(NSString *)charCode {
    if (!string || !charCode)
        [NSException raise:NSInvalidArgumentException format:@"a menu item needs its texts"];
    if ((self = [super init])) {
        _title = [string copy];
        _action = selector;
        _keyEquivalent = [charCode copy];
        _enabled = YES;
    }
    return self;
}

- (void)dealloc {
    [_submenu release];
    [_title release];
    [_keyEquivalent release];
    [_image release];
    [_representedObject release];
    [super dealloc];
}

@end

@implementation NSMenuItem (UserActions)

- (BOOL)userChooses {
    [_menu update];
    return _enabled && [[NSApplication sharedApplication] sendAction:_action to:_target from:self];
}

@end

namespace {

/// The state before any selection: the first item is shown.
constexpr NSInteger firstItem = -2;

} // namespace

@implementation NSPopUpButton

@synthesize menu = _menu;

- (instancetype)initWithFrame:(NSRect)frameRect {
    return [self initWithFrame:frameRect pullsDown:NO];
}

- (instancetype)initWithFrame:(NSRect)buttonFrame pullsDown:(BOOL)flag {
    if ((self = [super initWithFrame:buttonFrame])) {
        if (flag)
            [NSException raise:NSInvalidArgumentException format:@"pull-down buttons are not doubled"];
        _menu = [NSMenu new];
        _indexOfSelectedItem = firstItem;
    }
    return self;
}

- (NSInteger)numberOfItems {
    return [_menu numberOfItems];
}

- (NSArray *)itemArray {
    return [_menu itemArray];
}

- (NSMenuItem *)selectedItem {
    const NSInteger index = [self indexOfSelectedItem];
    return index < 0 ? nil : [_menu itemAtIndex:index];
}

- (NSInteger)indexOfSelectedItem {
    if (_indexOfSelectedItem == firstItem)
        return [self numberOfItems] > 0 ? 0 : -1;
    return _indexOfSelectedItem;
}

- (void)removeAllItems {
    [_menu removeAllItems];
    _indexOfSelectedItem = firstItem;
}

- (void)selectItemAtIndex:(NSInteger)index {
    if (index < -1 || index >= [self numberOfItems])
        [NSException raise:NSRangeException format:@"there is no item %ld", static_cast<long>(index)];
    _indexOfSelectedItem = index;
}

- (void)dealloc {
    [_menu release];
    [super dealloc];
}

@end

@implementation NSPopUpButton (UserActions)

- (BOOL)userChoosesItemAtIndex:(NSInteger)index {
    if (![self isEnabled])
        return NO;
    [self selectItemAtIndex:index];
    return [self userClicks];
}

@end
