#pragma once

#include "platform/Object.h"
#include "platform/ui/Selector.h"

#include <functional>
#include <string>

namespace fernhop::freedesktop {

/// What the widgets of a dialog need from around them.
struct ViewContext {
    /// Fires a control's action.
    std::function<void(ui::Selector action, const Object &sender)> perform;
    /// The `Icon` of the desktop entry at a path: a name in the icon theme or a file; empty: none.
    std::function<std::string(const std::string &entryPath)> iconOfEntry;
};

} // namespace fernhop::freedesktop
