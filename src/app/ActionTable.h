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

/// What a selector is invoked with; each operation takes what it needs and ignores the rest.
struct ActionArguments {
    const Object *sender = nullptr; ///< the menu item or control
    const Notification *notification = nullptr;
    const LinkEventDescriptor *event = nullptr;
    LinkEventDescriptor *reply = nullptr;
    std::ptrdiff_t row = -1; ///< of a table
};

/// What a selector answers; most answer nothing.
using ActionResult = std::variant<std::monostate, bool, std::size_t, TerminateReply, std::shared_ptr<Object>>;

/// From selector text to operation: how menus, dialogs and the desktop invoke the controller.
using ActionTable = std::map<std::string_view, std::function<ActionResult(const ActionArguments &)>>;

} // namespace fernhop
