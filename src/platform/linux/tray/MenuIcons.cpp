#include "platform/linux/tray/MenuIcons.h"

#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/PngFile.h"

#include <algorithm>
#include <cmath>

namespace fernhop::freedesktop {
namespace {

constexpr int usualPixels = 16; // what hosts show beside a title
constexpr int mostPixels = 64;  // some hosts drop larger pictures

int pixelsOf(const ui::Image &image) {
    return image.side > 0 ? std::clamp(static_cast<int>(std::lround(image.side)), 1, mostPixels)
                          : usualPixels;
}

MenuIcon iconData(const ui::Image &image, int side) {
    const auto pixels = render(image, side);
    auto png = pixels ? pngBytes(pixels.get()) : std::string();
    return png.empty() ? MenuIcon() : MenuIcon(IconData{std::move(png)});
}

struct MakeIcon {
    int side;

    MenuIcon operator()(std::monostate) const { return {}; }
    MenuIcon operator()(const IconName &icon) const { return icon; }
    MenuIcon operator()(const IconFile &icon) const {
        return iconData(ui::Image(ui::ImageFile{icon.path}, side, false), side);
    }
};

} // namespace

const MenuIcon &MenuIcons::icon(const ui::ImageReference &image) {
    static const MenuIcon none;
    if (!image)
        return none;
    const auto found = known.find(image);
    return found != known.end() ? found->second : known.emplace(image, make(*image)).first->second;
}

void MenuIcons::forgetUnused() {
    std::erase_if(known, [](const auto &entry) { return entry.first.use_count() == 1; });
}

MenuIcon MenuIcons::make(const ui::Image &image) const {
    const auto *application = std::get_if<ui::ApplicationIcon>(&image.source);
    if (application == nullptr)
        return iconData(image, pixelsOf(image));
    return std::visit(MakeIcon{pixelsOf(image)}, finder.iconOfEntry(application->path));
}

} // namespace fernhop::freedesktop
