#include "platform/linux/tray/Pixels.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace fernhop::freedesktop {
namespace {

constexpr double iconPoints = 18; // of the status icon, across
constexpr double rimAlpha = 0.75;

std::uint8_t unmultiplied(std::uint32_t channel, std::uint32_t alpha) {
    return alpha == 0 ? 0 : static_cast<std::uint8_t>(std::min(255U, (channel * 255 + alpha / 2) / alpha));
}

void append(std::vector<std::uint8_t> &bytes, std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24U;
    bytes.push_back(static_cast<std::uint8_t>(alpha));
    for (const unsigned shift : {16U, 8U, 0U})
        bytes.push_back(unmultiplied(pixel >> shift & 0xFFU, alpha));
}

} // namespace

SurfacePointer fitted(cairo_surface_t *image, int pixels) {
    SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels, pixels));
    const double width = cairo_image_surface_get_width(image), height = cairo_image_surface_get_height(image);
    if (width <= 0 || height <= 0)
        return surface;
    const double scale = pixels / std::max(width, height);
    const CairoPointer context(cairo_create(surface.get()));
    cairo_translate(context.get(), (pixels - width * scale) / 2, (pixels - height * scale) / 2);
    cairo_scale(context.get(), scale, scale);
    cairo_set_source_surface(context.get(), image, 0, 0);
    // Each pixel is the mean of those that it stands for; what cairo calls its best leaves a halo.
    cairo_pattern_set_filter(cairo_get_source(context.get()), CAIRO_FILTER_GOOD);
    // What lies beyond the edges is not to make them pale.
    cairo_pattern_set_extend(cairo_get_source(context.get()), CAIRO_EXTEND_PAD);
    cairo_rectangle(context.get(), 0, 0, width, height);
    cairo_fill(context.get());
    cairo_surface_flush(surface.get());
    return surface;
}

SurfacePointer rimmed(cairo_surface_t *image) {
    const int width = cairo_image_surface_get_width(image), height = cairo_image_surface_get_height(image);
    SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    const CairoPointer context(cairo_create(surface.get()));
    // The shape of the image, moved by a point in each direction, and then all of it at once.
    cairo_push_group(context.get());
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    for (const int right : {-1, 0, 1})
        for (const int down : {-1, 0, 1})
            cairo_mask_surface(context.get(), image, right * width / iconPoints, down * height / iconPoints);
    cairo_pop_group_to_source(context.get());
    cairo_paint_with_alpha(context.get(), rimAlpha);
    cairo_set_source_surface(context.get(), image, 0, 0);
    cairo_paint(context.get());
    cairo_surface_flush(surface.get());
    return surface;
}

std::vector<std::uint8_t> networkPixels(cairo_surface_t *image) {
    const auto width = static_cast<std::size_t>(cairo_image_surface_get_width(image));
    const auto height = static_cast<std::size_t>(cairo_image_surface_get_height(image));
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(image));
    const unsigned char *data = cairo_image_surface_get_data(image);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(width * height * 4);
    for (std::size_t row = 0; row < height; ++row) {
        for (std::size_t column = 0; column < width; ++column) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, data + row * stride + column * 4, sizeof pixel);
            append(bytes, pixel);
        }
    }
    return bytes;
}

} // namespace fernhop::freedesktop
