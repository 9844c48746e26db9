#pragma once

#include "platform/linux/applications/ApplicationPlaces.h"
#include "platform/linux/applications/DesktopEntries.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Far above any real desktop entry (LibreOffice's, in all its languages, has about 60 KiB); larger ones are
/// not read.
inline constexpr std::size_t largestDesktopEntry = std::size_t{1} << 20;

/// The desktop entries of a user, read from the disk at each call. "org/x/y.desktop" beneath a folder has the
/// ID "org-x-y". Of several files with one ID the first decides, be it a good entry or not, so that a user's
/// own file hides the system's.
class InstalledDesktopEntries : public DesktopEntries {
  public:
    explicit InstalledDesktopEntries(ApplicationPlaces places);

    [[nodiscard]] std::optional<DesktopEntry> entry(const std::string &id) const override;
    [[nodiscard]] bool hasProgram(const DesktopEntry &entry) const override;
    [[nodiscard]] std::optional<DesktopEntry> entryAtPath(const std::string &path) const override;
    [[nodiscard]] std::vector<DesktopEntry> refused() const override;
    [[nodiscard]] std::vector<DesktopEntry> all() const override;
    [[nodiscard]] std::size_t fingerprint() const override;

    /// The entry in the file at `path` if that file is the one that decides about its ID.
    [[nodiscard]] std::optional<DesktopEntry> decidingEntryAtPath(const std::string &path) const;

  private:
    /// The file that decides about an ID; nothing when no folder has it. An ID is UTF-8 without "/" and NUL;
    /// no other text has a file.
    [[nodiscard]] std::optional<std::string> fileOf(const std::string &id) const;

    /// The ID of a file, whether or not it decides about it; nothing for a path that is no desktop entry's,
    /// or beneath none of the folders, or hidden.
    [[nodiscard]] std::optional<std::string> idOf(const std::string &path) const;

    using Parse = decltype(&parseDesktopEntry);

    [[nodiscard]] std::vector<DesktopEntry> allThat(Parse parse) const;
    [[nodiscard]] std::optional<DesktopEntry> decidingEntry(const std::string &path, Parse parse) const;
    [[nodiscard]] std::optional<DesktopEntry> read(const std::string &path, const std::string &id,
                                                   Parse parse = parseDesktopEntry) const;
    [[nodiscard]] bool isInstalled(const std::string &program) const;

    ApplicationPlaces places;
};

} // namespace fernhop::freedesktop
