#pragma once

#include "platform/linux/tray/CairoPointer.h"

#include <string>

namespace fernhop::freedesktop {

/// The image in a PNG file; null when the file cannot be read, is none, or is unreasonably large for an icon.
[[nodiscard]] SurfacePointer readPng(const std::string &path);

/// A surface as the bytes of a PNG file; empty when that fails.
[[nodiscard]] std::string pngBytes(cairo_surface_t *surface);

} // namespace fernhop::freedesktop
