#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// How desktop-file IDs and files belong together: "org/x/y.desktop" beneath a folder has the ID "org-x-y".
/// Of several files with one ID the first decides, be it a good entry or not, so that a user's own file hides
/// the system's. Looks at the disk at each call. Main thread only.
class DesktopEntryFolders {
  public:
    /// Folders in order of precedence: absolute, without a slash at the end.
    explicit DesktopEntryFolders(std::vector<std::string> folders);

    /// The file that decides about an ID; nothing when no folder has it. An ID is UTF-8 without "/" and NUL;
    /// no other text has a file.
    [[nodiscard]] std::optional<std::string> fileOf(const std::string &id) const;

    /// The ID of a file, whether or not it decides about it; nothing for a path that is no desktop entry's,
    /// or beneath none of the folders, or hidden.
    [[nodiscard]] std::optional<std::string> idOf(const std::string &path) const;

    /// Whether the file at `path` is the one that decides about its ID.
    [[nodiscard]] bool decides(const std::string &path, const std::string &id) const;

    [[nodiscard]] const std::vector<std::string> &all() const { return folders; }

  private:
    std::vector<std::string> folders;
};

} // namespace fernhop::freedesktop
