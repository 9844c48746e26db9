#pragma once

#include "platform/linux/tray/CairoPointer.h"
#include "platform/ui/Drawing.h"

namespace fernhop::freedesktop {

/// `drawing`, made for a square of `side` points, on `pixels` by `pixels` transparent pixels: drawn anew for
/// each size, so that it is as crisp as the size allows.
[[nodiscard]] SurfacePointer paint(const ui::Drawing &drawing, double side, int pixels);

} // namespace fernhop::freedesktop
