#include "platform/linux/settings/SettingsFile.h"

#include "platform/linux/base/FileReplacement.h"
#include "platform/linux/settings/PropertyListCoding.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <utility>

namespace fernhop::freedesktop {

namespace {

namespace fs = std::filesystem;

/// Several steps of the coarsest clock that the kernel takes file times from.
constexpr std::int64_t settlingTime = 100'000'000;

/// As many links as the kernel follows.
constexpr int mostLinks = 40;

std::int64_t nanoseconds(const timespec &time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileIdentity identityOf(const struct stat &status) {
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
            nanoseconds(status.st_ctim)};
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// The path behind the links at `path`, whether or not anything is there; nothing when they lead in a circle.
std::optional<fs::path> followed(fs::path path) {
    std::error_code error;
    for (int links = 0; links < mostLinks; ++links) {
        if (!fs::is_symlink(fs::symlink_status(path, error)))
            return path;
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            return std::nullopt;
        path = path.parent_path() / target;
    }
    return std::nullopt;
}

fs::path withSuffix(fs::path path, std::string_view suffix) {
    return path += suffix;
}

/// Everything in an open file, up to one byte more than a property list may have.
std::optional<std::string> readAll(int file, std::size_t expected) {
    constexpr std::size_t most = propertyListLimit::bytes + 1;
    std::string bytes(std::min(expected + 1, most), '\0');
    std::size_t length = 0;
    while (length < bytes.size()) {
        const ssize_t count = ::read(file, bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
        if (length == bytes.size() && length < most)
            bytes.resize(std::min(2 * length, most));
    }
    bytes.resize(length);
    return length < most ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace

bool FileIdentity::isSettled() const {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return std::llabs(nanoseconds(now) - changed) > settlingTime;
}

SettingsFile::SettingsFile(fs::path location) : path(std::move(location)) {}

std::optional<FileIdentity> SettingsFile::identity() const {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? std::optional(identityOf(status)) : std::nullopt;
}

std::optional<SettingsFile::Contents> SettingsFile::read() const {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) {
        if (errno == ENOENT)
            return std::nullopt;
        return Contents{identity(), std::nullopt};
    }
    struct stat status {};
    if (::fstat(file.get(), &status) != 0)
        return Contents{};
    if (!S_ISREG(status.st_mode) || status.st_size > static_cast<off_t>(propertyListLimit::bytes))
        return Contents{identityOf(status), std::nullopt};
    return Contents{identityOf(status), readAll(file.get(), static_cast<std::size_t>(status.st_size))};
}

std::optional<FileLock> SettingsFile::lock(std::chrono::milliseconds atMost) const {
    const auto target = followed(path);
    if (!target || makeFolder(target->parent_path()))
        return std::nullopt;
    return FileLock::acquire(withSuffix(*target, ".lock"), atMost);
}

std::error_code SettingsFile::replace(std::string_view bytes) const {
    const auto target = followed(path);
    return target ? replaceFile(*target, bytes)
                  : std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

std::error_code SettingsFile::keepAside() const {
    const auto target = followed(path);
    if (!target)
        return std::make_error_code(std::errc::too_many_symbolic_link_levels);
    for (int number = 1;; ++number) {
        const fs::path kept = withSuffix(*target, ".unreadable-" + std::to_string(number));
        if (::link(target->c_str(), kept.c_str()) == 0)
            return {};
        // A second name is not given to folders, nor on every file system; there the first one is taken away.
        if (errno != EEXIST &&
            ::renameat2(AT_FDCWD, target->c_str(), AT_FDCWD, kept.c_str(), RENAME_NOREPLACE) == 0)
            return {};
        if (errno != EEXIST)
            return lastError();
    }
}

} // namespace fernhop::freedesktop
