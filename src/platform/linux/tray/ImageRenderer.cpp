#include "platform/linux/tray/ImageRenderer.h"

#include "platform/linux/tray/PngFile.h"
#include "platform/linux/tray/Symbols.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <numbers>

namespace fernhop::freedesktop {

namespace {

struct Rgba {
    double red, green, blue, alpha;
};

// A tray cannot tell what its menus look like, so the roles that follow a palette stand out on light and
// dark.
Rgba valueOf(ui::ColorRole role) {
    switch (role) {
    case ui::ColorRole::white:
        return {1, 1, 1, 1};
    case ui::ColorRole::black:
        return {0, 0, 0, 1};
    case ui::ColorRole::controlAccent:
        return {0.20, 0.49, 0.86, 1};
    case ui::ColorRole::label:
    case ui::ColorRole::secondaryLabel:
    case ui::ColorRole::tertiaryLabel:
    case ui::ColorRole::separator:
        break;
    }
    return {0.5, 0.5, 0.5, 1};
}

void add(cairo_t *context, const ui::MoveTo &step) {
    cairo_move_to(context, step.to.x, step.to.y);
}

void add(cairo_t *context, const ui::LineTo &step) {
    cairo_line_to(context, step.to.x, step.to.y);
}

void add(cairo_t *context, const ui::CurveTo &step) {
    cairo_curve_to(context, step.control1.x, step.control1.y, step.control2.x, step.control2.y, step.to.x,
                   step.to.y);
}

void add(cairo_t *context, const ui::ClosePath &) {
    cairo_close_path(context);
}

void add(cairo_t *context, const ui::Oval &oval) {
    cairo_new_sub_path(context);
    cairo_save(context);
    cairo_translate(context, oval.origin.x + oval.width / 2, oval.origin.y + oval.height / 2);
    cairo_scale(context, oval.width / 2, oval.height / 2);
    cairo_arc(context, 0, 0, 1, 0, 2 * std::numbers::pi);
    // The pen is not to be squeezed with the circle.
    cairo_restore(context);
    cairo_close_path(context);
}

void draw(cairo_t *context, const ui::Path &path) {
    cairo_new_path(context);
    for (const ui::PathElement &element : path.elements)
        std::visit([context](const auto &step) { add(context, step); }, element);
    if (path.strokeWidth <= 0)
        return cairo_fill(context);
    cairo_set_line_width(context, path.strokeWidth);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_stroke(context);
}

} // namespace

SurfacePointer paint(const ui::Drawing &drawing, double side, int pixels) {
    SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels, pixels));
    const CairoPointer context(cairo_create(surface.get()));
    // Points grow upwards, rows of pixels downwards.
    cairo_translate(context.get(), 0, pixels);
    cairo_scale(context.get(), pixels / side, -pixels / side);
    const Rgba ink = valueOf(drawing.ink.role);
    cairo_set_source_rgba(context.get(), ink.red, ink.green, ink.blue, ink.alpha * drawing.ink.alpha);
    for (const ui::Path &path : drawing.paths)
        draw(context.get(), path);
    cairo_surface_flush(surface.get());
    return surface;
}

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

namespace {

struct Renderer {
    int pixels;
    double side;

    SurfacePointer operator()(const ui::ImageFile &file) const {
        const auto image = readPng(file.path);
        return image ? fitted(image.get(), pixels) : nullptr;
    }
    SurfacePointer operator()(const ui::ApplicationIcon &) const { return nullptr; }
    SurfacePointer operator()(const ui::SystemSymbol &symbol) const {
        const auto drawing = symbolNamed(symbol.name, {ui::ColorRole::label, 1});
        return drawing ? paint(*drawing, symbolSide, pixels) : nullptr;
    }
    SurfacePointer operator()(const ui::Drawing &drawing) const {
        return side > 0 ? paint(drawing, side, pixels) : nullptr;
    }
};

} // namespace

SurfacePointer render(const ui::Image &image, int pixels) {
    return std::visit(Renderer{pixels, image.side}, image.source);
}

std::vector<std::uint8_t> iconPixels(const ui::ImageReference &image, bool withRim, int pixels) {
    const auto picture = image ? render(*image, pixels) : nullptr;
    if (!picture)
        return {};
    return networkPixels(withRim ? rimmed(picture.get()).get() : picture.get());
}

ui::ImageReference LinuxImages::imageWithContentsOfUrl(const Url &file, double side) const {
    if (!file.isFileUrl() || !isImage.at(file.path()))
        return nullptr;
    return std::make_shared<const ui::Image>(ui::ImageFile{file.path()}, side, false);
}

ui::ImageReference LinuxImages::imageWithSystemSymbolName(const std::string &name, double side) const {
    if (!symbolNamed(name, {}))
        return nullptr;
    return std::make_shared<const ui::Image>(ui::SystemSymbol{name}, side, true);
}

} // namespace fernhop::freedesktop
