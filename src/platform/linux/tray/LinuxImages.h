#pragma once

#include "platform/linux/base/Files.h"
#include "platform/ui/Images.h"

#include <map>
#include <string>

namespace fernhop::freedesktop {

/// Images from PNG files and the symbols that Fernhop has drawn. Main thread only.
class LinuxImages : public ui::Images {
  public:
    [[nodiscard]] ui::ImageReference imageWithContentsOfUrl(const Url &file, double side) const override;
    [[nodiscard]] ui::ImageReference imageWithSystemSymbolName(const std::string &name,
                                                               double side) const override;

  private:
    struct KnownFile {
        FileIdentity identity;
        bool isImage = false;
    };

    [[nodiscard]] bool isImage(const std::string &path) const;

    // The status icon is asked for at each rebuild of the menu.
    mutable std::map<std::string, KnownFile> knownFiles;
};

} // namespace fernhop::freedesktop
