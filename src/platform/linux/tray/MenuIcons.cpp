#include "platform/linux/tray/MenuIcons.h"

#include "platform/Utf8.h"
#include "platform/linux/applications/IconName.h"
#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/PngFile.h"

namespace fernhop::freedesktop {
namespace {

// What hosts show beside a title.
constexpr int menuIconPixels = 16;

MenuIcon iconData(const ui::Image &image) {
    const auto pixels = render(image, menuIconPixels);
    auto png = pixels ? pngBytes(pixels.get()) : std::string();
    return png.empty() ? MenuIcon() : MenuIcon(IconData{std::move(png)});
}

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
    return application ? iconOfApplication(application->path) : iconData(image);
}

MenuIcon MenuIcons::iconOfApplication(const std::string &path) const {
    const auto entry = entries.entryAtPath(path);
    if (!entry || entry->icon.empty() || !isValidUtf8(entry->icon))
        return {};
    if (entry->icon.starts_with('/'))
        return iconData(ui::Image(ui::ImageFile{entry->icon}, menuIconPixels, false));
    return IconName{iconName(entry->icon)};
}

} // namespace fernhop::freedesktop
