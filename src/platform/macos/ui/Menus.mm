#include "platform/macos/ui/Menus.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/ui/NativeImage.h"

namespace fernhop::macos {

SEL toSelector(ui::Selector selector) {
    return selector.empty() ? nullptr : NSSelectorFromString(toNSString(selector));
}

NSMenuItem *toNSMenuItem(const ui::MenuItem &item, const ActionTarget &target) {
    if (item.isSeparator)
        return [NSMenuItem separatorItem];
    NSMenuItem *shown = [[[NSMenuItem alloc] initWithTitle:toNSString(item.title)
                                                    action:toSelector(item.action)
                                             keyEquivalent:toNSString(item.keyEquivalent)] autorelease];
    if (!item.action.empty())
        [shown setTarget:target.target()];
    [shown setRepresentedObject:target.attachment(item.representedObject)];
    [shown setState:static_cast<NSControlStateValue>(item.state)];
    [shown setEnabled:item.enabled];
    [shown setImage:toNSImage(item.image)];
    if (item.submenu)
        [shown setSubmenu:toNSMenu(*item.submenu, target)];
    return shown;
}

NSMenu *toNSMenu(const ui::Menu &menu, const ActionTarget &target) {
    NSMenu *shown = [[[NSMenu alloc] initWithTitle:@""] autorelease];
    for (const ui::MenuItem &item : menu.items)
        [shown addItem:toNSMenuItem(item, target)];
    return shown;
}

} // namespace fernhop::macos
