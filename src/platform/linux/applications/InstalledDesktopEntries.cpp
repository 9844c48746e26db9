#include "platform/linux/applications/InstalledDesktopEntries.h"

#include "platform/Utf8.h"
#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/applications/PosixFileManager.h"
#include "platform/linux/base/Files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <functional>
#include <set>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {

namespace {

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
    std::string file = folder + '/' + std::string(id) + std::string(desktopEntryExtension);
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

bool isProgram(const std::string &path) {
    struct stat status {};
    return access(path.c_str(), X_OK) == 0 && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Of files by their paths and identities.
class Fingerprint {
  public:
    void add(const std::string &path) {
        const auto identity = FileIdentity::of(path).value_or(FileIdentity{});
        const auto size = static_cast<std::uint64_t>(identity.size);
        for (const std::uint64_t part :
             {std::uint64_t{std::hash<std::string>()(path)}, identity.device, identity.inode, size,
              static_cast<std::uint64_t>(identity.modified), static_cast<std::uint64_t>(identity.changed)})
            sum = (sum ^ part) * prime;
    }
    [[nodiscard]] std::size_t value() const { return static_cast<std::size_t>(sum); }

  private:
    static constexpr std::uint64_t prime = 0x100000001B3; // of the hash FNV-1a
    std::uint64_t sum = 0;
};

/// The name of a file without folder and extension.
std::string stem(const std::string &path) {
    const auto start = path.rfind('/') + 1;
    const auto dot = path.rfind('.');
    return path.substr(start, dot == std::string::npos || dot <= start ? std::string::npos : dot - start);
}

} // namespace

InstalledDesktopEntries::InstalledDesktopEntries(ApplicationPlaces applicationPlaces)
    : places(std::move(applicationPlaces)) {}

std::optional<std::string> InstalledDesktopEntries::fileOf(const std::string &id) const {
    const bool canBeID = id.size() < PATH_MAX && id.find('/') == std::string::npos &&
                         id.find('\0') == std::string::npos && isValidUtf8(id);
    if (!canBeID)
        return std::nullopt;
    for (const auto &folder : places.folders) {
        if (auto file = fileBeneath(folder, id))
            return file;
    }
    return std::nullopt;
}

std::optional<std::string> InstalledDesktopEntries::idOf(const std::string &path) const {
    for (const auto &folder : places.folders) {
        if (!path.starts_with(folder) || path.size() <= folder.size() || path[folder.size()] != '/')
            continue;
        std::string id = path.substr(folder.size() + 1);
        if (!id.ends_with(desktopEntryExtension) || hasHiddenComponent(id) || !isValidUtf8(id) ||
            id.find('\0') != id.npos)
            return std::nullopt;
        id.resize(id.size() - desktopEntryExtension.size());
        std::replace(id.begin(), id.end(), '/', '-');
        return id;
    }
    return std::nullopt;
}

std::optional<DesktopEntry> InstalledDesktopEntries::entry(const std::string &id) const {
    const auto file = fileOf(id);
    return file ? read(*file, id) : std::nullopt;
}

std::optional<DesktopEntry> InstalledDesktopEntries::entryAtPath(const std::string &path) const {
    return read(path, idOf(path).value_or(stem(path)));
}

std::optional<DesktopEntry> InstalledDesktopEntries::decidingEntryAtPath(const std::string &path) const {
    return decidingEntry(path, parseDesktopEntry);
}

std::vector<DesktopEntry> InstalledDesktopEntries::all() const {
    return allThat(parseDesktopEntry);
}

std::vector<DesktopEntry> InstalledDesktopEntries::refused() const {
    return allThat(parseRefusedEntry);
}

std::optional<DesktopEntry> InstalledDesktopEntries::decidingEntry(const std::string &path,
                                                                   Parse parse) const {
    const auto id = idOf(path);
    return id && fileOf(*id) == path ? read(path, *id, parse) : std::nullopt;
}

std::vector<DesktopEntry> InstalledDesktopEntries::allThat(Parse parse) const {
    std::vector<DesktopEntry> entries;
    std::set<std::string> taken;
    for (const auto &folder : places.folders) {
        const auto walk = DirectoryWalk::over(folder);
        while (const auto path = walk ? walk->next() : std::nullopt) {
            auto found = decidingEntry(*path, parse);
            if (found && taken.insert(found->id).second) // folders may lie in one another
                entries.push_back(std::move(*found));
        }
    }
    return entries;
}

std::size_t InstalledDesktopEntries::fingerprint() const {
    Fingerprint fingerprint;
    for (const auto &folder : places.folders) {
        const auto walk = DirectoryWalk::over(folder);
        while (const auto path = walk ? walk->next() : std::nullopt) {
            if (path->ends_with(desktopEntryExtension))
                fingerprint.add(*path);
        }
    }
    // An entry counts only when its program is there.
    for (const auto &folder : places.programFolders)
        fingerprint.add(folder);
    return fingerprint.value();
}

std::optional<DesktopEntry> InstalledDesktopEntries::read(const std::string &path, const std::string &id,
                                                          Parse parse) const {
    const auto contents = readFile(path, largestDesktopEntry);
    auto found = contents ? parse(*contents, places.locales, places.desktops) : std::nullopt;
    if (!found || !isInstalled(found->tryExec))
        return std::nullopt;
    found->id = id;
    found->path = path;
    return found;
}

bool InstalledDesktopEntries::hasProgram(const DesktopEntry &entry) const {
    const auto words = execWords(entry.exec);
    return words && !words->empty() && isInstalled(words->front().text);
}

bool InstalledDesktopEntries::isInstalled(const std::string &program) const {
    if (program.empty() || program.front() == '/')
        return program.empty() || isProgram(program);
    return std::any_of(places.programFolders.begin(), places.programFolders.end(),
                       [&](const std::string &folder) { return isProgram(folder + '/' + program); });
}

} // namespace fernhop::freedesktop
