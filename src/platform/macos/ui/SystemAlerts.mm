#include "platform/macos/ui/SystemAlerts.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/ui/ViewTree.h"

#include <utility>

namespace fernhop::macos {

namespace {

/// Activates the application. It has no Dock icon, so choosing from its menu does not, and another
/// application would keep the keyboard.
void activate() {
    [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
}

NSAlert *makeAlert(const ui::Alert &alert) {
    NSAlert *shown = [[[NSAlert alloc] init] autorelease];
    [shown setMessageText:toNSString(alert.messageText)];
    [shown setInformativeText:toNSString(alert.informativeText)];
    [shown setAlertStyle:NSAlertStyleInformational];
    for (const std::string &title : alert.buttons)
        [shown addButtonWithTitle:toNSString(title)];
    // The system assigns Escape only to a button with an English title.
    if (alert.buttons.size() > 1)
        [[[shown buttons] lastObject] setKeyEquivalent:@"\033"];
    return shown;
}

} // namespace

bool SystemAlerts::bringToFront() {
    if (!open)
        return false;
    activate();
    [[open.get() window] makeKeyAndOrderFront:nil];
    return true;
}

int SystemAlerts::runModal(const ui::Alert &alert) {
    NSInteger response;
    @autoreleasepool { // so that the views are released when this returns
        ViewTree tree(target);
        NSAlert *shown = makeAlert(alert);
        if (alert.accessoryView) {
            [shown setAccessoryView:tree.show(alert.accessoryView)];
            if (NSView *field = tree.firstField())
                [[shown window] setInitialFirstResponder:field];
        }
        response = show(shown);
        tree.take();
    }
    const auto last = ui::alertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
    const bool isButton = response >= ui::alertFirstButtonReturn && response <= last;
    return isButton ? static_cast<int>(response) : last;
}

NSInteger SystemAlerts::show(NSAlert *alert) {
    Reference<NSAlert> former = std::exchange(open, Reference<NSAlert>(alert));
    activate();
    const NSInteger response = [alert runModal];
    open = std::move(former);
    return response;
}

} // namespace fernhop::macos
