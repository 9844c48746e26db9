#pragma once

#include "platform/linux/base/ConfigurationFile.h"
#include "platform/linux/tray/PngFile.h"
#include "platform/ui/Images.h"

#include <optional>
#include <string>

namespace fernhop::freedesktop {

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
