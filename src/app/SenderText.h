#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/MenuItem.h"

#include <string>

namespace fernhop {

/// The represented text of a menu item that sent an action, valid as long as the item; null for another
/// sender or an item without one.
[[nodiscard]] inline const std::string *representedTextOf(const Object *sender) {
    return ui::representedText(dynamic_cast<const ui::MenuItem *>(sender));
}

/// The identifier of a button that sent an action, valid as long as the button; null for another sender or a
/// button without one.
[[nodiscard]] inline const std::string *identifierOf(const Object *sender) {
    const auto *button = dynamic_cast<const ui::Button *>(sender);
    return button && !button->identifier.empty() ? &button->identifier : nullptr;
}

} // namespace fernhop
