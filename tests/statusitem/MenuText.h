#pragma once

#include "platform/ui/MenuItem.h"

#include <string>

namespace fernhop {

/// A menu as text, one line an item: indentation for submenus, "[x]" for a check mark, "(…)" around what is
/// disabled, the image in angle brackets, the action after "=>", what the item carries after "with".
[[nodiscard]] std::string asText(const ui::Menu &menu, const std::string &indentation = "");

} // namespace fernhop
