#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/MenuItem.h"

#include <string>

namespace fernhop {

/// The text that a menu item carries, valid as long as the item; null for any other sender, and for an item
/// without text.
[[nodiscard]] inline const std::string *textCarriedBy(const Object *sender) {
    return ui::representedText(dynamic_cast<const ui::MenuItem *>(sender));
}

/// The identifier of a button, valid as long as the button; null for any other sender, and for a button
/// without one.
[[nodiscard]] inline const std::string *identifierOf(const Object *sender) {
    const auto *button = dynamic_cast<const ui::Button *>(sender);
    return button && !button->identifier.empty() ? &button->identifier : nullptr;
}

} // namespace fernhop
