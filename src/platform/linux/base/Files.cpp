#include "platform/linux/base/Files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace fernhop::freedesktop {

namespace {

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t permissionBits = 07777;

/// Several steps of the coarsest clock that the kernel takes file times from.
constexpr std::int64_t settlingTime = 100'000'000;

/// As many symbolic links as the kernel follows.
constexpr int mostLinks = 40;

Failure lastFailure() {
    return Failure::ofSystem(errno);
}

std::int64_t nanoseconds(const timespec &time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileIdentity identityOf(const struct stat &status) {
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
            nanoseconds(status.st_ctim)};
}

/// Everything in an open file; nothing when that is more than `largest` bytes.
std::optional<std::string> readAll(int file, std::size_t expected, std::size_t largest) {
    const std::size_t most = largest + 1;
    std::string bytes(std::clamp(expected + 1, std::min(most, std::size_t{4096}), most), '\0');
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

/// What the symbolic link at `path` holds; nothing when there is no link.
std::optional<std::string> targetOfLink(const std::string &path) {
    std::array<char, PATH_MAX> target{};
    const auto length = ::readlink(path.c_str(), target.data(), target.size());
    return length < 0
               ? std::nullopt
               : std::optional<std::string>(std::in_place, target.data(), static_cast<std::size_t>(length));
}

Result<> writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return lastFailure();
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return Success{};
}

/// A new name is on the disk only when its folder is.
Result<> syncFolder(const std::string &folder) {
    const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened)
        return lastFailure();
    // Some network file systems do not sync folders and say so; they keep names by their own means.
    if (::fsync(opened.get()) != 0 && errno != EINVAL)
        return lastFailure();
    return Success{};
}

/// Lets the new file be whose the old one was, as far as this process may say so.
void takeOverOwner(int file, const std::string &old) {
    struct stat status {};
    if (::stat(old.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    if (::fchown(file, status.st_uid, status.st_gid) == 0)
        ::fchmod(file, status.st_mode & permissionBits);
}

/// Opens a new file beside `path` and sets `name` to its path.
FileDescriptor openNew(std::string &name, const std::string &path, Writers writers) {
    name = path + (writers == Writers::one ? ".new" : ".XXXXXX");
    if (writers == Writers::many)
        return FileDescriptor(::mkostemp(name.data(), O_CLOEXEC));
    ::unlink(name.c_str());
    return FileDescriptor(
        ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, ownerOnly));
}

Result<> writeToDisk(int file, std::string_view bytes) {
    if (auto written = writeAll(file, bytes); !written)
        return written;
    if (::fsync(file) != 0)
        return lastFailure();
    return Success{};
}

bool isRegularOrMissing(const std::string &path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) != 0 ? errno == ENOENT : S_ISREG(found.st_mode);
}

} // namespace

std::optional<FileIdentity> FileIdentity::of(const std::string &path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? std::optional(identityOf(status)) : std::nullopt;
}

std::optional<FileIdentity> FileIdentity::of(const FileDescriptor &file) {
    struct stat status {};
    return ::fstat(file.get(), &status) == 0 ? std::optional(identityOf(status)) : std::nullopt;
}

bool FileIdentity::isSettled() const {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return std::llabs(nanoseconds(now) - changed) > settlingTime;
}

FileDescriptor openForReading(const std::string &path) {
    // The system would open the file of the name before the NUL.
    if (path.find('\0') != std::string::npos) {
        errno = EINVAL;
        return FileDescriptor();
    }
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

std::optional<std::string> readFile(const FileDescriptor &file, std::size_t largest) {
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto size = static_cast<std::size_t>(status.st_size);
    return size <= largest ? readAll(file.get(), size, largest) : std::nullopt;
}

std::optional<std::string> readFile(const std::string &path, std::size_t largest) {
    return readFile(openForReading(path), largest);
}

std::optional<std::string> readForChange(const std::string &path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0 && errno == ENOENT)
        return "";
    return readFile(path);
}

bool exists(const std::string &path) {
    return ::access(path.c_str(), F_OK) == 0;
}

std::optional<std::string> followedLinks(std::string path) {
    for (int links = 0; links < mostLinks; ++links) {
        const auto target = targetOfLink(path);
        if (!target)
            return path;
        path = target->starts_with('/') ? *target : folderOf(path) + '/' + *target;
    }
    return std::nullopt;
}

std::string folderOf(const std::string &path) {
    const auto slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

Result<> makeFolder(const std::string &folder) {
    if (::mkdir(folder.c_str(), S_IRWXU) == 0)
        return syncFolder(folder + "/..");
    if (errno == EEXIST)
        return Success{};
    const std::string above = folderOf(folder);
    if (errno != ENOENT || above == folder)
        return lastFailure();
    if (auto made = makeFolder(above); !made)
        return made;
    if (::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        return lastFailure();
    return syncFolder(folder + "/..");
}

Result<> replaceFile(const std::string &path, std::string_view bytes, Writers writers) {
    const auto target = followedLinks(path);
    if (!target)
        return Failure::ofSystem(ELOOP);
    std::string name;
    const FileDescriptor file = openNew(name, *target, writers);
    if (!file)
        return lastFailure();
    takeOverOwner(file.get(), *target);
    auto written = writeToDisk(file.get(), bytes);
    if (written && std::rename(name.c_str(), target->c_str()) != 0)
        written = lastFailure();
    if (!written) {
        ::unlink(name.c_str());
        return written;
    }
    return syncFolder(folderOf(*target));
}

Result<> replaceConfigurationFile(const std::string &path, std::string_view bytes) {
    const auto target = followedLinks(path);
    if (!target)
        return Failure::ofSystem(ELOOP);
    if (!isRegularOrMissing(*target))
        return Failure{*target + " is not a regular file", EINVAL};
    if (auto made = makeFolder(folderOf(*target)); !made)
        return made;
    return replaceFile(*target, bytes, Writers::many);
}

bool canReplaceConfigurationFile(const std::string &path) {
    const auto target = followedLinks(path);
    if (!target || !isRegularOrMissing(*target))
        return false;
    std::string folder = folderOf(*target);
    while (!exists(folder) && folder != "/" && folder != ".")
        folder = folderOf(folder);
    return ::access(folder.c_str(), W_OK | X_OK) == 0;
}

} // namespace fernhop::freedesktop
