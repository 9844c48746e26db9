#include "platform/linux/tray/Painter.h"

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

} // namespace fernhop::freedesktop
