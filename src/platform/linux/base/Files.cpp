#include "platform/linux/base/Files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <thread>

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

/// Lets the new file be whose the old one was, as far as this process may say so. Its owner may always read
/// and write it: what was written with less could never be read again.
void takeOverOwner(int file, const std::string &old) {
    struct stat status {};
    if (::stat(old.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    if (::fchown(file, status.st_uid, status.st_gid) == 0)
        ::fchmod(file, (status.st_mode & permissionBits) | ownerOnly);
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

using Clock = std::chrono::steady_clock;

/// The two bytes of a lock file that are locked. Whoever has the turn is the next to have the lock itself.
/// Without turns, a process that writes again and again would take the lock back before any other notices
/// that it is free.
enum class Byte : off_t { turn = 0, lock = 1 };

struct flock rangeOf(Byte byte, short type) {
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<off_t>(byte);
    range.l_len = 1;
    return range;
}

/// The wait is a row of short sleeps because a lock that is waited for in the kernel cannot be given up, and
/// a stopped process that holds it must not stop this one for good.
bool waitFor(int file, Byte byte, Clock::time_point deadline) {
    struct flock range = rangeOf(byte, F_WRLCK);
    while (::fcntl(file, F_OFD_SETLK, &range) != 0) {
        if ((errno != EAGAIN && errno != EACCES && errno != EINTR) || Clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

bool waitForLock(int file, Clock::time_point deadline) {
    if (!waitFor(file, Byte::turn, deadline) || !waitFor(file, Byte::lock, deadline))
        return false;
    struct flock turn = rangeOf(Byte::turn, F_UNLCK);
    return ::fcntl(file, F_OFD_SETLK, &turn) == 0;
}

/// Somebody may have removed the file while this process waited for it; others then lock another one.
bool isStillAt(const std::string &path, const FileDescriptor &file) {
    const auto held = FileIdentity::of(file);
    const auto present = FileIdentity::of(path);
    return held && present && held->device == present->device && held->inode == present->inode;
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

bool exists(const std::string &path) {
    return ::access(path.c_str(), F_OK) == 0;
}

std::optional<std::string> followedLinks(std::string path) {
    for (int links = 0; links < mostLinks; ++links) {
        std::error_code isNoLink;
        const auto target = std::filesystem::read_symlink(path, isNoLink).string();
        if (isNoLink)
            return path;
        path = target.starts_with('/') ? target : folderOf(path) + '/' + target;
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
    if (::mkdir(folder.c_str(), S_IRWXU) == 0) {
        ::chmod(folder.c_str(), S_IRWXU); // the umask may have taken more away
        return syncFolder(folder + "/..");
    }
    if (errno == EEXIST)
        return Success{};
    const std::string above = folderOf(folder);
    if (errno != ENOENT || above == folder)
        return lastFailure();
    auto made = makeFolder(above);
    return made ? makeFolder(folder) : made;
}

Result<> replaceFile(const std::string &path, std::string_view bytes, Writers writers) {
    const auto target = followedLinks(path);
    if (!target)
        return Failure::ofSystem(ELOOP);
    std::string name;
    const FileDescriptor file = openNew(name, *target, writers);
    if (!file)
        return lastFailure();
    ::fchmod(file.get(), ownerOnly); // the umask may have taken more away
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

std::optional<FileLock> FileLock::acquire(const std::string &file, std::chrono::milliseconds atMost) {
    const Clock::time_point deadline = Clock::now() + atMost;
    while (true) {
        FileDescriptor opened(
            ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, S_IRUSR | S_IWUSR));
        if (!opened || !waitForLock(opened.get(), deadline))
            return std::nullopt;
        if (isStillAt(file, opened))
            return FileLock(std::move(opened));
    }
}

} // namespace fernhop::freedesktop
