#include "platform/linux/tray/ImageRenderer.h"

#include "platform/linux/tray/Painter.h"
#include "platform/linux/tray/Pixels.h"
#include "platform/linux/tray/PngFile.h"
#include "platform/linux/tray/Symbols.h"

namespace fernhop::freedesktop {
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

} // namespace fernhop::freedesktop
