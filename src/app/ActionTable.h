#pragma once

#include "platform/Application.h"
#include "platform/LinkEvents.h"
#include "platform/Notifications.h"
#include "platform/Object.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <variant>

namespace fernhop {

/// The arguments of an action; each operation uses what it needs and ignores the rest.
struct ActionArguments {
    const Object *sender = nullptr; ///< the menu item or control
    const Notification *notification = nullptr;
    const LinkEventDescriptor *event = nullptr;
    LinkEventDescriptor *reply = nullptr;
    std::ptrdiff_t row = -1; ///< of a table
};

/// The result of an action; most have none.
using ActionResult = std::variant<std::monostate, bool, std::size_t, TerminateReply, std::shared_ptr<Object>>;

/// Maps each selector to its operation: this is how menus, dialogs and the desktop invoke the controller.
using ActionTable = std::map<std::string_view, std::function<ActionResult(const ActionArguments &)>>;

} // namespace fernhop
