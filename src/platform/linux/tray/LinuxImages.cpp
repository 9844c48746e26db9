#include "platform/linux/tray/LinuxImages.h"

#include "platform/linux/tray/Symbols.h"

namespace fernhop::freedesktop {

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
