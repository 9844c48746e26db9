#include "platform/linux/base/FileReplacement.h"

#include "platform/linux/base/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

namespace fernhop::freedesktop {

namespace {

namespace fs = std::filesystem;

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t permissionBits = 07777;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::error_code writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return lastError();
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return {};
}

/// A new name is on the disk only when its folder is.
std::error_code syncFolder(const fs::path &folder) {
    const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened)
        return lastError();
    // Some network file systems do not sync folders and say so; they keep names by their own means.
    return ::fsync(opened.get()) == 0 || errno == EINVAL ? std::error_code() : lastError();
}

/// Lets the new file be whose the old one was, as far as this process may say so.
void takeOverOwner(int file, const fs::path &old) {
    struct stat status {};
    if (::stat(old.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    if (::fchown(file, status.st_uid, status.st_gid) == 0)
        ::fchmod(file, status.st_mode & permissionBits);
}

std::error_code writeNewFile(const fs::path &path, const fs::path &old, std::string_view bytes) {
    const FileDescriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, ownerOnly));
    if (!file)
        return lastError();
    takeOverOwner(file.get(), old);
    if (const std::error_code error = writeAll(file.get(), bytes))
        return error;
    return ::fsync(file.get()) == 0 ? std::error_code() : lastError();
}

} // namespace

std::error_code makeFolder(const fs::path &folder) {
    if (folder.empty() || ::mkdir(folder.c_str(), S_IRWXU) == 0)
        return folder.empty() ? std::error_code() : syncFolder(folder / "..");
    if (errno == EEXIST)
        return {};
    if (errno != ENOENT || !folder.has_relative_path())
        return lastError();
    if (const std::error_code error = makeFolder(folder.parent_path()))
        return error;
    return ::mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST ? syncFolder(folder / "..") : lastError();
}

std::error_code replaceFile(const fs::path &file, std::string_view bytes) {
    const fs::path written = fs::path(file) += ".new";
    ::unlink(written.c_str());
    std::error_code error = writeNewFile(written, file, bytes);
    if (!error && std::rename(written.c_str(), file.c_str()) != 0)
        error = lastError();
    if (error) {
        ::unlink(written.c_str());
        return error;
    }
    return syncFolder(file.has_parent_path() ? file.parent_path() : fs::path("."));
}

} // namespace fernhop::freedesktop
