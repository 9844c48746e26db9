#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/MenuItem.h"

#include <string>

namespace fernhop {

/// The text that a menu item carries; null for any other sender, and for an item that carries none. It lives
/// as long as the item.
[[nodiscard]] inline const std::string *textCarriedBy(const Object *sender) {
    const auto *item = dynamic_cast<const ui::MenuItem *>(sender);
    return item ? std::get_if<std::string>(&item->representedObject) : nullptr;
}

/// The identifier of a button; null for any other sender, and for a button that has none. It lives as long as
/// the button.
[[nodiscard]] inline const std::string *identifierOf(const Object *sender) {
    const auto *button = dynamic_cast<const ui::Button *>(sender);
    return button && !button->identifier.empty() ? &button->identifier : nullptr;
}

} // namespace fernhop
