#pragma once

#include "platform/ui/Images.h"

#include <cstdint>
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
    /// What tells whether a file is still the one that was read.
    struct Identity {
        std::uint64_t device = 0, inode = 0, size = 0;
        std::int64_t seconds = 0, nanoseconds = 0;

        bool operator==(const Identity &) const = default;
    };
    struct KnownFile {
        Identity identity;
        bool isImage = false;
    };

    [[nodiscard]] static Identity identityOf(const std::string &path);
    [[nodiscard]] bool isImage(const std::string &path) const;

    // The status icon is asked for at each rebuild of the menu.
    mutable std::map<std::string, KnownFile> knownFiles;
};

} // namespace fernhop::freedesktop
