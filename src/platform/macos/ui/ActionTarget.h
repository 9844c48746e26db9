#pragma once

#include "platform/ui/MenuItem.h"
#include "platform/ui/View.h"

#import <Foundation/Foundation.h>

#include <memory>

@class NSView;

namespace fernhop::macos {

/// What menus and dialogs need from the application: the target of their controls' actions, and the
/// conversion of represented objects. Implemented by the main program, which knows their types. Must outlive
/// every menu and dialog. Main thread only.
class ActionTarget {
  public:
    virtual ~ActionTarget() = default;

    /// The object that responds to every selector of the controller; owned by the process, never nil.
    [[nodiscard]] virtual id target() const = 0;

    /// The system's object for `value`: nil, a string, or an object of the class for its type. Autoreleased.
    [[nodiscard]] virtual id attachment(const ui::RepresentedObject &value) const = 0;

    /// The value for an object of `attachmentFor`; none for nil and for an object of another class.
    [[nodiscard]] virtual ui::RepresentedObject representedObject(id attachment) const = 0;
};

/// The core's object for the sender of an action: for a control of the open alert, the object in its view
/// tree; for another menu item, button, pop-up button or text field, a copy of its attributes. Null for
/// anything else.
[[nodiscard]] std::shared_ptr<const Object> objectForSender(id sender, const ActionTarget &target);

/// A view that shows `view` and its subviews, for a table's row; autoreleased. Nil for null.
[[nodiscard]] NSView *viewShowing(const std::shared_ptr<ui::View> &view, const ActionTarget &target);

} // namespace fernhop::macos
