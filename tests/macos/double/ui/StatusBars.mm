#include "macos/double/ui/System.h"

#import <AppKit/NSStatusBar.h>

@implementation NSStatusBarButton
@end

@implementation NSStatusItem

@synthesize length = _length;
@synthesize menu = _menu;
@synthesize button = _button;

- (instancetype)init {
    if ((self = [super init]))
        _button = [NSStatusBarButton new];
    return self;
}

- (void)dealloc {
    std::erase(fernhop::macos_double::system().statusItems, self);
    [_menu release];
    [_button release];
    [super dealloc];
}

@end

@implementation NSStatusBar

+ (NSStatusBar *)systemStatusBar {
    static NSStatusBar *const bar = [self new];
    return bar;
}

- (NSStatusItem *)statusItemWithLength:(CGFloat)length {
    NSStatusItem *item = [[NSStatusItem new] autorelease];
    item.length = length;
    fernhop::macos_double::system().statusItems.push_back(item);
    return item;
}

- (void)removeStatusItem:(NSStatusItem *)item {
    std::erase(fernhop::macos_double::system().statusItems, item);
}

@end
