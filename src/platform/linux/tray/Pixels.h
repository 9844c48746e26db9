#pragma once

#include "platform/linux/tray/CairoPointer.h"

#include <cstdint>
#include <vector>

namespace fernhop::freedesktop {

/// `image` scaled in proportion into the middle of `pixels` by `pixels` transparent pixels.
[[nodiscard]] SurfacePointer fitted(cairo_surface_t *image, int pixels);

/// `image` with a light rim around what it shows, one point wide on an icon of 18: a dark picture shows on a
/// dark ground then, too.
[[nodiscard]] SurfacePointer rimmed(cairo_surface_t *image);

/// The pixels of an ARGB surface as StatusNotifierItem has them: four bytes each, alpha, red, green, blue,
/// not premultiplied, row by row from the top.
[[nodiscard]] std::vector<std::uint8_t> networkPixels(cairo_surface_t *image);

} // namespace fernhop::freedesktop
