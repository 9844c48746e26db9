#include "platform/linux/applications/DesktopEntryFolders.h"

#include "platform/Utf8.h"

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view extension = ".desktop";

bool isFolder(const std::string &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isFile(const std::string &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool isHidden(std::string_view name) {
    return name.empty() || name.front() == '.';
}

/// The first file beneath `folder` with the ID `id`, in the order in which `DirectoryWalk` meets them: the
/// file of that very name, then files in folders named like what stands before one of its dashes, shortest
/// first.
std::optional<std::string> fileBeneath(const std::string &folder, std::string_view id) {
    if (isHidden(id))
        return std::nullopt;
    std::string file = folder + '/' + std::string(id) + std::string(extension);
    if (isFile(file))
        return file;
    for (auto dash = id.find('-'); dash != std::string_view::npos && dash <= NAME_MAX;
         dash = id.find('-', dash + 1)) {
        const std::string subfolder = folder + '/' + std::string(id.substr(0, dash));
        if (dash == 0 || !isFolder(subfolder))
            continue;
        if (auto found = fileBeneath(subfolder, id.substr(dash + 1)))
            return found;
    }
    return std::nullopt;
}

bool hasHiddenComponent(std::string_view relativePath) {
    return isHidden(relativePath) || relativePath.find("/.") != std::string_view::npos ||
           relativePath.find("//") != std::string_view::npos;
}

} // namespace

DesktopEntryFolders::DesktopEntryFolders(std::vector<std::string> foldersInOrder)
    : folders(std::move(foldersInOrder)) {}

std::optional<std::string> DesktopEntryFolders::fileOf(const std::string &id) const {
    const bool canBeID = id.size() < PATH_MAX && id.find('/') == std::string::npos &&
                         id.find('\0') == std::string::npos && isValidUtf8(id);
    if (!canBeID)
        return std::nullopt;
    for (const auto &folder : folders) {
        if (auto file = fileBeneath(folder, id))
            return file;
    }
    return std::nullopt;
}

std::optional<std::string> DesktopEntryFolders::idOf(const std::string &path) const {
    for (const auto &folder : folders) {
        if (!path.starts_with(folder) || path.size() <= folder.size() || path[folder.size()] != '/')
            continue;
        std::string id = path.substr(folder.size() + 1);
        if (!id.ends_with(extension) || hasHiddenComponent(id) || !isValidUtf8(id) ||
            id.find('\0') != id.npos)
            return std::nullopt;
        id.resize(id.size() - extension.size());
        std::replace(id.begin(), id.end(), '/', '-');
        return id;
    }
    return std::nullopt;
}

bool DesktopEntryFolders::decides(const std::string &path, const std::string &id) const {
    return fileOf(id) == path;
}

} // namespace fernhop::freedesktop
