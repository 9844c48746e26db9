#include "platform/macos/ui/MainMenu.h"

namespace fernhop::macos {

namespace {

/// An item for the first responder.
void add(NSMenu *menu, NSString *title, SEL action, NSString *key) {
    [menu addItem:[[[NSMenuItem alloc] initWithTitle:title action:action keyEquivalent:key] autorelease]];
}

} // namespace

NSMenu *makeMainMenu() {
    NSMenu *edit = [[[NSMenu alloc] initWithTitle:@"Edit"] autorelease];
    add(edit, @"Cut", @selector(cut:), @"x");
    add(edit, @"Copy", @selector(copy:), @"c");
    add(edit, @"Paste", @selector(paste:), @"v");
    add(edit, @"Select All", @selector(selectAll:), @"a");
    NSMenuItem *holder = [[[NSMenuItem alloc] initWithTitle:@"Edit" action:nullptr
                                              keyEquivalent:@""] autorelease];
    [holder setSubmenu:edit];
    NSMenu *menu = [[[NSMenu alloc] initWithTitle:@""] autorelease];
    [menu addItem:holder];
    return menu;
}

} // namespace fernhop::macos
