#pragma once

#include "platform/linux/tray/CairoPointer.h"
#include "platform/ui/Image.h"

namespace fernhop::freedesktop {

/// An image as `pixels` by `pixels` pixels; null for an application's icon, which the icon theme has, and for
/// what cannot be read or has not been drawn.
[[nodiscard]] SurfacePointer render(const ui::Image &image, int pixels);

} // namespace fernhop::freedesktop
