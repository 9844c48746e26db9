#pragma once

#include "platform/linux/tray/CairoPointer.h"
#include "platform/ui/Image.h"

#include <cstdint>
#include <vector>

namespace fernhop::freedesktop {

/// An image as `pixels` by `pixels` pixels; null for an application's icon, which the icon theme has, and for
/// what cannot be read or has not been drawn.
[[nodiscard]] SurfacePointer render(const ui::Image &image, int pixels);

/// The status icon as `pixels` by `pixels` pixels, in the form of networkPixels(), with a light rim for an
/// image that need not stand out by itself; empty for what is null or cannot be rendered.
[[nodiscard]] std::vector<std::uint8_t> iconPixels(const ui::ImageReference &image, bool withRim, int pixels);

} // namespace fernhop::freedesktop
