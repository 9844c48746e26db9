#pragma once

#include "platform/linux/applications/ApplicationPlaces.h"
#include "platform/linux/applications/DesktopEntries.h"

#include <string>
#include <variant>
#include <vector>

namespace fernhop::freedesktop {

/// Where icons are kept. Absolute paths, no slash at the end.
struct IconFolders {
    std::vector<std::string> themes;  ///< each holds one folder for each theme
    std::vector<std::string> pixmaps; ///< of icons that belong to no theme, in order of precedence
};

/// The folders that the Icon Theme Specification names, beside those of the desktop entries in `places`.
[[nodiscard]] IconFolders iconFolders(const ApplicationPlaces &places);

/// A name in the icon theme, which the host looks up in its own theme and at its own size.
struct IconName {
    std::string name;

    bool operator==(const IconName &) const = default;
};

/// A picture by its path, of whatever format, there or not.
struct IconFile {
    std::string path;

    bool operator==(const IconFile &) const = default;
};

/// Where the icon of an application comes from; nothing: it has none that could be shown.
using IconSource = std::variant<std::monostate, IconName, IconFile>;

/// Finds the icons of applications by their desktop entries. Looks at the disk at each call. Main thread
/// only.
class IconFinder {
  public:
    /// `desktopEntries` outlives this object.
    IconFinder(const DesktopEntries &desktopEntries, IconFolders iconFolders)
        : entries(desktopEntries), folders(std::move(iconFolders)) {}

    /// The icon of the desktop entry at a path: a file where the entry names one, or where a folder outside
    /// the themes has a PNG file of the name and the theme that every host falls back to has none.
    [[nodiscard]] IconSource iconOfEntry(const std::string &path) const;

  private:
    [[nodiscard]] IconSource iconNamed(const std::string &name) const;
    [[nodiscard]] bool isInCommonTheme(const std::string &name) const;

    const DesktopEntries &entries;
    const IconFolders folders;
};

} // namespace fernhop::freedesktop
