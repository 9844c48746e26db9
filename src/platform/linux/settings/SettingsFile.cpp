#include "platform/linux/settings/SettingsFile.h"

#include "platform/linux/settings/PropertyListCoding.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace fernhop::freedesktop {

SettingsFile::SettingsFile(std::string location) : path(std::move(location)) {}

std::optional<FileIdentity> SettingsFile::identity() const {
    return FileIdentity::of(path);
}

std::optional<SettingsFile::Contents> SettingsFile::read() const {
    const FileDescriptor file = openForReading(path);
    if (file)
        return Contents{FileIdentity::of(file), readFile(file, propertyListLimit::bytes)};
    return errno == ENOENT ? std::nullopt : std::optional(Contents{identity(), std::nullopt});
}

std::optional<FileLock> SettingsFile::lock(std::chrono::milliseconds atMost) const {
    const auto target = followedLinks(path);
    if (!target || !makeFolder(folderOf(*target)))
        return std::nullopt;
    return FileLock::acquire(*target + ".lock", atMost);
}

Result<> SettingsFile::replace(std::string_view bytes) const {
    return replaceFile(path, bytes, Writers::one);
}

Result<> SettingsFile::keepAside() const {
    const auto target = followedLinks(path);
    if (!target)
        return Failure::ofSystem(ELOOP);
    for (int number = 1;; ++number) {
        const std::string kept = *target + ".unreadable-" + std::to_string(number);
        if (::link(target->c_str(), kept.c_str()) == 0)
            return Success{};
        // A second name is not given to folders, nor on every file system; there the first one is taken away.
        if (errno != EEXIST &&
            ::renameat2(AT_FDCWD, target->c_str(), AT_FDCWD, kept.c_str(), RENAME_NOREPLACE) == 0)
            return Success{};
        if (errno != EEXIST)
            return Failure::ofSystem(errno);
    }
}

} // namespace fernhop::freedesktop
