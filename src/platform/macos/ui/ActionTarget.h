#pragma once

#include "platform/ui/MenuItem.h"
#include "platform/ui/View.h"

#import <Foundation/Foundation.h>

#include <memory>

@class NSView;

namespace fernhop::macos {

/// What menus and dialogs need of the application: where their controls send their actions, and how the data
/// that an item carries is attached to it. Implemented by the main program, which knows what items carry; it
/// outlives every menu and dialog. Main thread only.
class ActionTarget {
  public:
    virtual ~ActionTarget() = default;

    /// The object that answers every selector of the controller; owned by the process, never nil.
    [[nodiscard]] virtual id target() const = 0;

    /// The object to attach for `value`: nil, a string, or an object of the class that stands for its type.
    /// It is autoreleased.
    [[nodiscard]] virtual id attachment(const ui::RepresentedObject &value) const = 0;

    /// What an attached object stands for: none for nil and for an object of another class.
    [[nodiscard]] virtual ui::RepresentedObject representedObject(id attachment) const = 0;
};

/// The core's object behind the sender of an action: for a control of the open alert the very one of its view
/// tree, for another menu item, button, pop-up button or text field a copy of what it shows. Null for
/// anything else.
[[nodiscard]] std::shared_ptr<const Object> objectForSender(id sender, const ActionTarget &target);

/// A view that shows `view` and what is beneath it, for the row of a table; autoreleased. Nil for null.
[[nodiscard]] NSView *viewShowing(const std::shared_ptr<ui::View> &view, const ActionTarget &target);

} // namespace fernhop::macos
