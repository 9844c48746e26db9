#pragma once

#include "platform/linux/base/Result.h"

#include <sys/types.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// Files that are read whole and replaced whole. Everything here may be called on any thread.
namespace fernhop::freedesktop {

/// Owns an open file of the system.
class FileDescriptor {
  public:
    explicit FileDescriptor(int opened = -1) : number(opened) {}
    FileDescriptor(FileDescriptor &&other) noexcept : number(std::exchange(other.number, -1)) {}
    FileDescriptor &operator=(FileDescriptor &&other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    ~FileDescriptor() {
        if (number >= 0)
            ::close(number);
    }

    [[nodiscard]] explicit operator bool() const { return number >= 0; }
    [[nodiscard]] int get() const { return number; }
    /// Gives the file up to the caller.
    [[nodiscard]] int release() { return std::exchange(number, -1); }

  private:
    int number;
};

/// What tells one state of a file from another without looking into it.
struct FileIdentity {
    dev_t device;
    ino_t inode;
    off_t size;
    std::int64_t modified; ///< nanoseconds since 1970, of the contents
    std::int64_t changed;  ///< nanoseconds since 1970, of anything about the file

    bool operator==(const FileIdentity &) const = default;

    /// The state of what is at `path`, symbolic links followed; nothing when nothing is there.
    [[nodiscard]] static std::optional<FileIdentity> of(const std::string &path);
    [[nodiscard]] static std::optional<FileIdentity> of(const FileDescriptor &file);

    /// Whether a change from now on is sure to give the file another identity. Not so right after a change:
    /// the times of files move in steps of some milliseconds.
    [[nodiscard]] bool isSettled() const;
};

/// Far above any configuration file.
inline constexpr std::size_t largestUsualFile = std::size_t{16} << 20U;

/// Opens a file for `readFile` without waiting, even for a pipe. Where that fails, errno says why.
[[nodiscard]] FileDescriptor openForReading(const std::string &path);

/// The contents of a regular file of at most `largest` bytes; nothing for any other file, or when it cannot
/// be read. The kernel's files in /proc count, though they show no size.
[[nodiscard]] std::optional<std::string> readFile(const FileDescriptor &file,
                                                  std::size_t largest = largestUsualFile);
[[nodiscard]] std::optional<std::string> readFile(const std::string &path,
                                                  std::size_t largest = largestUsualFile);

/// Whether there is anything at `path`, symbolic links followed.
[[nodiscard]] bool exists(const std::string &path);

/// The path behind the symbolic links at `path`, whether or not anything is there; nothing when they lead in
/// a circle. The folders above are left as written.
[[nodiscard]] std::optional<std::string> followedLinks(std::string path);

/// The folder above `path`, "." for a bare name.
[[nodiscard]] std::string folderOf(const std::string &path);

/// Makes a folder, and those above it, for this user alone. A success when it is there already.
Result<> makeFolder(const std::string &folder);

/// How many may be replacing one file at the same time.
enum class Writers {
    one, ///< the caller holds a lock; what a killed process left behind goes with the next replacement
    many
};

/// Puts a new file with these bytes in the place of `path`, on the disk before it returns: whatever happens,
/// the path leads either to the old file or to the whole new one. A symbolic link stays and its target is
/// replaced; owner and permissions stay as far as this process may set them, except that the owner may always
/// read and write the new file, whatever the umask. The folder must be there.
Result<> replaceFile(const std::string &path, std::string_view bytes, Writers writers);

/// The sole right to change something, among processes that ask for it by the same file. It ends with the
/// object, or with the process however that ends.
class FileLock {
  public:
    /// Waits for the lock at most so long, and makes the file when it is not there (its folder must be).
    /// Nothing when the wait was in vain or the file cannot be made.
    [[nodiscard]] static std::optional<FileLock> acquire(const std::string &file,
                                                         std::chrono::milliseconds atMost);

  private:
    explicit FileLock(FileDescriptor locked) : file(std::move(locked)) {}

    FileDescriptor file;
};

} // namespace fernhop::freedesktop
