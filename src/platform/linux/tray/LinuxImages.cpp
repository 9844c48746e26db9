#include "platform/linux/tray/LinuxImages.h"

#include "platform/linux/tray/PngFile.h"
#include "platform/linux/tray/Symbols.h"

#include <sys/stat.h>

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

LinuxImages::Identity LinuxImages::identityOf(const std::string &path) {
    struct stat file {};
    if (stat(path.c_str(), &file) != 0)
        return {};
    return {file.st_dev, file.st_ino, static_cast<std::uint64_t>(file.st_size), file.st_mtim.tv_sec,
            file.st_mtim.tv_nsec};
}

bool LinuxImages::isImage(const std::string &path) const {
    const Identity now = identityOf(path);
    auto &known = knownFiles[path];
    if (known.identity != now)
        known = {now, readPng(path) != nullptr};
    return known.isImage;
}

} // namespace fernhop::freedesktop
