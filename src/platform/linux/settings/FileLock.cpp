#include "platform/linux/settings/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <thread>

namespace fernhop::freedesktop {

namespace {

using Clock = std::chrono::steady_clock;

/// The wait is a row of short sleeps because a lock that is waited for in the kernel cannot be given up, and
/// a stopped process that holds it must not stop this one for good.
bool waitForLock(int file, Clock::time_point deadline) {
    while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || Clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

/// Somebody may have removed the file while this process waited for it; others then lock another one.
bool isStillAt(const std::filesystem::path &path, int file) {
    struct stat held {};
    struct stat present {};
    return ::fstat(file, &held) == 0 && ::stat(path.c_str(), &present) == 0 &&
           held.st_dev == present.st_dev && held.st_ino == present.st_ino;
}

} // namespace

std::optional<FileLock> FileLock::acquire(const std::filesystem::path &file,
                                          std::chrono::milliseconds atMost) {
    const Clock::time_point deadline = Clock::now() + atMost;
    while (true) {
        FileDescriptor opened(
            ::open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, S_IRUSR | S_IWUSR));
        if (!opened || !waitForLock(opened.get(), deadline))
            return std::nullopt;
        if (isStillAt(file, opened.get()))
            return FileLock(std::move(opened));
    }
}

} // namespace fernhop::freedesktop
