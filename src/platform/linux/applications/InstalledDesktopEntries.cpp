#include "platform/linux/applications/InstalledDesktopEntries.h"

#include "platform/linux/applications/DesktopEntryParser.h"
#include "platform/linux/applications/DirectoryWalk.h"
#include "platform/linux/base/Files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <set>
#include <utility>

namespace fernhop::freedesktop {

namespace {

bool isProgram(const std::string &path) {
    struct stat status {};
    return access(path.c_str(), X_OK) == 0 && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// The name of a file without folder and extension.
std::string stem(const std::string &path) {
    const auto start = path.rfind('/') + 1;
    const auto dot = path.rfind('.');
    return path.substr(start, dot == std::string::npos || dot <= start ? std::string::npos : dot - start);
}

} // namespace

InstalledDesktopEntries::InstalledDesktopEntries(ApplicationPlaces applicationPlaces)
    : places(std::move(applicationPlaces)), folders(places.folders) {}

std::optional<DesktopEntry> InstalledDesktopEntries::entry(const std::string &id) const {
    const auto file = folders.fileOf(id);
    return file ? read(*file, id) : std::nullopt;
}

std::optional<DesktopEntry> InstalledDesktopEntries::entryAtPath(const std::string &path) const {
    return read(path, folders.idOf(path).value_or(stem(path)));
}

std::optional<DesktopEntry> InstalledDesktopEntries::decidingEntryAtPath(const std::string &path) const {
    const auto id = folders.idOf(path);
    return id && folders.decides(path, *id) ? read(path, *id) : std::nullopt;
}

std::vector<DesktopEntry> InstalledDesktopEntries::all() const {
    std::vector<DesktopEntry> entries;
    std::set<std::string> taken;
    for (const auto &folder : folders.all()) {
        const auto walk = DirectoryWalk::over(folder);
        while (const auto path = walk ? walk->next() : std::nullopt) {
            auto found = decidingEntryAtPath(*path);
            if (found && taken.insert(found->id).second) // folders may lie in one another
                entries.push_back(std::move(*found));
        }
    }
    return entries;
}

std::optional<DesktopEntry> InstalledDesktopEntries::read(const std::string &path,
                                                          const std::string &id) const {
    const auto contents = readFile(path, largestDesktopEntry);
    auto found = contents ? parseDesktopEntry(*contents, places.locales) : std::nullopt;
    if (!found || !isInstalled(found->tryExec))
        return std::nullopt;
    found->id = id;
    found->path = path;
    return found;
}

bool InstalledDesktopEntries::isInstalled(const std::string &program) const {
    if (program.empty() || program.front() == '/')
        return program.empty() || isProgram(program);
    return std::any_of(places.programFolders.begin(), places.programFolders.end(),
                       [&](const std::string &folder) { return isProgram(folder + '/' + program); });
}

} // namespace fernhop::freedesktop
