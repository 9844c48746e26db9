#include "platform/linux/base/FileLock.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <thread>

namespace fernhop::freedesktop {

namespace {

using Clock = std::chrono::steady_clock;

/// The two bytes of the file that are locked. Whoever has the turn is the next to have the lock itself.
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
