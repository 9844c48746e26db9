#pragma once

#include "platform/linux/applications/ApplicationPlaces.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/DesktopEntryFolders.h"

namespace fernhop::freedesktop {

/// Far above any real desktop entry (LibreOffice's, in all its languages, has about 60 KiB); larger ones are
/// not read.
inline constexpr std::size_t largestDesktopEntry = std::size_t{1} << 20;

/// The desktop entries of a user, read from the disk at each call.
class InstalledDesktopEntries : public DesktopEntries {
  public:
    explicit InstalledDesktopEntries(ApplicationPlaces places);

    [[nodiscard]] std::optional<DesktopEntry> entry(const std::string &id) const override;
    [[nodiscard]] std::optional<DesktopEntry> entryAtPath(const std::string &path) const override;
    [[nodiscard]] std::vector<DesktopEntry> all() const override;

    /// The entry in the file at `path` if that file is the one that decides about its ID.
    [[nodiscard]] std::optional<DesktopEntry> decidingEntryAtPath(const std::string &path) const;

  private:
    [[nodiscard]] std::optional<DesktopEntry> read(const std::string &path, const std::string &id) const;
    [[nodiscard]] bool isInstalled(const std::string &program) const;

    ApplicationPlaces places;
    DesktopEntryFolders folders;
};

} // namespace fernhop::freedesktop
