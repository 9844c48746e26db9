#pragma once

#include "platform/ui/Drawing.h"

#include <optional>
#include <string_view>

namespace fernhop::freedesktop {

/// The square that symbols are drawn for, in points; their natural size.
inline constexpr double symbolSide = 16;

/// Our drawing of a symbol by its name ("link.circle"), in `ink`; nothing for a name that we have not drawn.
[[nodiscard]] std::optional<ui::Drawing> symbolNamed(std::string_view name, ui::Color ink);

} // namespace fernhop::freedesktop
