#pragma once

#include "platform/ui/Drawing.h"

namespace fernhop {

/// Side of every status image, in points.
inline constexpr double statusImageSide = 18;

/// Two curved arrows around a dot, in a square of `statusImageSide`: the status image when no resource can be
/// loaded.
[[nodiscard]] ui::Drawing makeFallbackGlyph(ui::Color ink);

} // namespace fernhop
