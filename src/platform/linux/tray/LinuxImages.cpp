#include "platform/linux/tray/LinuxImages.h"

#include "platform/linux/tray/PngFile.h"
#include "platform/linux/tray/Symbols.h"

namespace fernhop::freedesktop {

ui::ImageReference LinuxImages::imageWithContentsOfUrl(const Url &file, double side) const {
    if (!file.isFileUrl() || !isImage(file.path()))
        return nullptr;
    return std::make_shared<const ui::Image>(ui::ImageFile{file.path()}, side, false);
}

ui::ImageReference LinuxImages::imageWithSystemSymbolName(const std::string &name, double side) const {
    if (!symbolNamed(name, {}))
        return nullptr;
    return std::make_shared<const ui::Image>(ui::SystemSymbol{name}, side, true);
}

bool LinuxImages::isImage(const std::string &path) const {
    const auto now = FileIdentity::of(path);
    if (!now)
        return false;
    const auto known = knownFiles.find(path);
    if (known != knownFiles.end() && known->second.identity == *now)
        return known->second.isImage;
    const bool isPng = readPng(path) != nullptr;
    knownFiles.insert_or_assign(path, KnownFile{*now, isPng});
    return isPng;
}

} // namespace fernhop::freedesktop
