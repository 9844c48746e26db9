#pragma once

#include "platform/ui/MenuItem.h"

#include <string>

namespace fernhop {

/// A menu as text, a line for each item: indentation for submenus, "[x]" for a check mark, "(…)" around
/// disabled items, the image in angle brackets, the action after "=>", the represented object after "with".
[[nodiscard]] std::string asText(const ui::Menu &menu, const std::string &indentation = "");

} // namespace fernhop
