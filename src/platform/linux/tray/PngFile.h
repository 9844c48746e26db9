#pragma once

#include "platform/linux/base/GPointer.h"

#include <cairo.h>

#include <string>
#include <string_view>

namespace fernhop::freedesktop {

/// Pixels: premultiplied ARGB in the machine's byte order when made here. Null: there is no image.
using SurfacePointer = std::unique_ptr<cairo_surface_t, GDelete<cairo_surface_destroy>>;
using CairoPointer = std::unique_ptr<cairo_t, GDelete<cairo_destroy>>;

/// The image in the bytes of a PNG file; null when they are none, or unreasonably large for an icon.
[[nodiscard]] SurfacePointer decodePng(std::string_view bytes);

/// The same for a file; null also when it cannot be read.
[[nodiscard]] SurfacePointer readPng(const std::string &path);

/// Whether `bytes` begin like a PNG file whose picture has at most `side` pixels a side.
[[nodiscard]] bool isPngOfAtMost(unsigned side, std::string_view bytes);

/// A surface as the bytes of a PNG file; empty when that fails.
[[nodiscard]] std::string pngBytes(cairo_surface_t *surface);

} // namespace fernhop::freedesktop
