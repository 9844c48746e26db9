#pragma once

#include "platform/linux/base/GPointer.h"

#include <cairo.h>

namespace fernhop::freedesktop {

/// Pixels: premultiplied ARGB in the machine's byte order when made here. Null: there is no image.
using SurfacePointer = std::unique_ptr<cairo_surface_t, GDelete<cairo_surface_destroy>>;
using CairoPointer = std::unique_ptr<cairo_t, GDelete<cairo_destroy>>;

} // namespace fernhop::freedesktop
