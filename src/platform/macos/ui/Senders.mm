#include "platform/macos/Conversions.h"
#include "platform/macos/ui/ActionTarget.h"
#include "platform/macos/ui/LinkedControls.h"
#include "platform/ui/Button.h"
#include "platform/ui/MenuItem.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/TextField.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

namespace {

ui::ControlState toControlState(NSControlStateValue state) {
    return state == NSControlStateValueOn ? ui::ControlState::on : ui::ControlState::off;
}

ui::MenuItem copyOf(NSMenuItem *item, const ActionTarget &target) {
    ui::MenuItem copy(fromNSString([item title]), "");
    copy.representedObject = target.representedObject([item representedObject]);
    copy.state = toControlState([item state]);
    copy.enabled = [item isEnabled];
    copy.isSeparator = [item isSeparatorItem];
    return copy;
}

std::shared_ptr<const Object> copyOf(NSPopUpButton *button, const ActionTarget &target) {
    std::vector<ui::MenuItem> items;
    for (NSMenuItem *item in [button itemArray])
        items.push_back(copyOf(item, target));
    const std::size_t none = items.size();
    const NSInteger selected = [button indexOfSelectedItem];
    auto copy = std::make_shared<ui::PopUpButton>();
    copy->setItems(std::move(items));
    copy->selectItem(selected < 0 ? none : static_cast<std::size_t>(selected));
    copy->enabled = [button isEnabled];
    copy->identifier = fromNSString([button identifier]);
    return copy;
}

std::shared_ptr<const Object> copyOf(NSButton *button) {
    auto copy = std::make_shared<ui::Button>();
    copy->title = fromNSString([button title]);
    copy->state = toControlState([button state]);
    copy->identifier = fromNSString([button identifier]);
    return copy;
}

std::shared_ptr<const Object> copyOf(NSTextField *field) {
    auto copy = std::make_shared<ui::TextField>();
    copy->setStringValue(fromNSString([field stringValue]));
    copy->editable = [field isEditable];
    copy->identifier = fromNSString([field identifier]);
    return copy;
}

} // namespace

std::shared_ptr<const Object> objectForSender(id sender, const ActionTarget &target) {
    if ([sender isKindOfClass:[NSView class]])
        if (ViewLink *link = [static_cast<NSView *>(sender) fernhopLink]) {
            link->take();
            return link->object();
        }
    if ([sender isKindOfClass:[NSMenuItem class]])
        return std::make_shared<ui::MenuItem>(copyOf(static_cast<NSMenuItem *>(sender), target));
    if ([sender isKindOfClass:[NSPopUpButton class]]) // also an NSButton, so it is tested first
        return copyOf(static_cast<NSPopUpButton *>(sender), target);
    if ([sender isKindOfClass:[NSButton class]])
        return copyOf(static_cast<NSButton *>(sender));
    if ([sender isKindOfClass:[NSTextField class]])
        return copyOf(static_cast<NSTextField *>(sender));
    return nullptr;
}

} // namespace fernhop::macos
