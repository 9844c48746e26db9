#pragma once

#include "platform/linux/base/ConfigurationFile.h"
#include "platform/linux/tray/PngFile.h"
#include "platform/ui/Drawing.h"
#include "platform/ui/Image.h"
#include "platform/ui/Images.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// `drawing`, made for a square of `side` points, on `pixels` by `pixels` transparent pixels: drawn anew for
/// each size, so that it is as crisp as the size allows.
[[nodiscard]] SurfacePointer paint(const ui::Drawing &drawing, double side, int pixels);

/// `image` scaled in proportion into the middle of `pixels` by `pixels` transparent pixels.
[[nodiscard]] SurfacePointer fitted(cairo_surface_t *image, int pixels);

/// `image` with a light rim around what it shows, one point wide on an icon of 18: a dark picture shows on a
/// dark ground then, too.
[[nodiscard]] SurfacePointer rimmed(cairo_surface_t *image);

/// The pixels of an ARGB surface as StatusNotifierItem has them: four bytes each, alpha, red, green, blue,
/// not premultiplied, row by row from the top.
[[nodiscard]] std::vector<std::uint8_t> networkPixels(cairo_surface_t *image);

/// An image as `pixels` by `pixels` pixels; null for an application's icon, which the icon theme has, and for
/// what cannot be read or has not been drawn.
[[nodiscard]] SurfacePointer render(const ui::Image &image, int pixels);

/// The status icon as `pixels` by `pixels` pixels, in the form of networkPixels(), with a light rim for an
/// image that need not stand out by itself; empty for what is null or cannot be rendered.
[[nodiscard]] std::vector<std::uint8_t> iconPixels(const ui::ImageReference &image, bool withRim, int pixels);

/// Images from PNG files and the symbols that Fernhop has drawn. Main thread only.
class LinuxImages : public ui::Images {
  public:
    [[nodiscard]] ui::ImageReference imageWithContentsOfUrl(const Url &file, double side) const override;
    [[nodiscard]] ui::ImageReference imageWithSystemSymbolName(const std::string &name,
                                                               double side) const override;

  private:
    /// Whether a file is an image. The status icon is asked for at each rebuild of the menu.
    mutable ParsedFiles<bool> isImage{
        [](const std::optional<std::string> &bytes) { return bytes && decodePng(*bytes); }};
};

} // namespace fernhop::freedesktop
