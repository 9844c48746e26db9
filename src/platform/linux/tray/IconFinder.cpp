#include "platform/linux/tray/IconFinder.h"

#include "platform/Utf8.h"
#include "platform/linux/applications/DesktopEntries.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace fernhop::freedesktop {
namespace {

namespace fs = std::filesystem;

constexpr const char *systemPixmaps = "/usr/share/pixmaps";
// The theme that all others fall back to; which one a host uses, nobody tells.
constexpr const char *commonTheme = "hicolor";
constexpr std::string_view applicationContext = "apps"; // the folder of application icons within a theme
constexpr std::array<std::string_view, 3> endings = {".png", ".svg", ".xpm"};
constexpr std::size_t longestName = 200; // bytes; with an ending it must fit a file name

bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

/// Texts that no desktop could show an icon for, and that hosts might stumble over.
bool isUsable(const std::string &icon) {
    if (icon.empty() || !isValidUtf8(icon) || std::ranges::any_of(icon, isControl))
        return false;
    return icon.starts_with('/') ||
           (icon.size() <= longestName && icon.find('/') == std::string::npos && !icon.starts_with('.'));
}

bool isFile(const fs::path &path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

std::vector<fs::path> entriesOf(const fs::path &folder) {
    std::error_code error;
    std::vector<fs::path> found;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        found.push_back(at->path());
    return found;
}

bool hasIcon(const fs::path &folder, const std::string &name) {
    return std::ranges::any_of(
        endings, [&](std::string_view ending) { return isFile(folder / (name + std::string(ending))); });
}

/// A theme sorts its icons by size, and then by context ("48x48/apps").
bool themeHas(const fs::path &theme, const std::string &name) {
    return std::ranges::any_of(
        entriesOf(theme), [&](const fs::path &size) { return hasIcon(size / applicationContext, name); });
}

} // namespace

IconFolders iconFolders(const ApplicationPlaces &places) {
    IconFolders folders;
    folders.themes.push_back(places.home + "/.icons");
    for (const std::string &applications : places.folders) {
        const fs::path data = fs::path(applications).parent_path();
        folders.themes.push_back((data / "icons").string());
        folders.pixmaps.push_back((data / "pixmaps").string());
    }
    if (std::ranges::find(folders.pixmaps, systemPixmaps) == folders.pixmaps.end())
        folders.pixmaps.emplace_back(systemPixmaps);
    return folders;
}

IconSource IconFinder::iconOfEntry(const std::string &path) const {
    const auto entry = entries.entryAtPath(path);
    if (!entry || !isUsable(entry->icon))
        return {};
    if (entry->icon.starts_with('/'))
        return IconFile{entry->icon};
    return iconNamed(iconName(entry->icon));
}

IconSource IconFinder::iconNamed(const std::string &name) const {
    for (const std::string &folder : folders.pixmaps) {
        const std::string file = folder + "/" + name + ".png";
        // Few applications get this far, so that the many folders of the themes are searched seldom.
        if (isFile(file) && !isInCommonTheme(name))
            return IconFile{file};
    }
    return IconName{name};
}

bool IconFinder::isInCommonTheme(const std::string &name) const {
    return std::ranges::any_of(folders.themes, [&](const std::string &themes) {
        return themeHas(fs::path(themes) / commonTheme, name);
    });
}

} // namespace fernhop::freedesktop
