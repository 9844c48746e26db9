#include "SystemCalls.h"

#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <filesystem>

namespace fernhop::freedesktop {

namespace {

SystemCalls *observer = nullptr;

std::string nameOf(int file) {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), error).filename().string();
}

std::string nameOf(const char *path) {
    return std::filesystem::path(path).filename().string();
}

/// Whether the call is to fail, with errno set.
bool fails(const std::string &call) {
    if (!observer)
        return false;
    observer->made.push_back(call);
    const int error = observer->failure ? observer->failure(call) : 0;
    errno = error;
    return error != 0;
}

} // namespace

SystemCalls::SystemCalls() {
    observer = this;
}
SystemCalls::~SystemCalls() {
    observer = nullptr;
}

extern "C" {

ssize_t __real_read(int file, void *bytes, size_t size);
ssize_t __wrap_read(int file, void *bytes, size_t size) {
    return fails("read " + nameOf(file)) ? -1 : __real_read(file, bytes, size);
}

ssize_t __real_write(int file, const void *bytes, size_t size);
ssize_t __wrap_write(int file, const void *bytes, size_t size) {
    return fails("write " + nameOf(file)) ? -1 : __real_write(file, bytes, size);
}

int __real_fsync(int file);
int __wrap_fsync(int file) {
    return fails("fsync " + nameOf(file)) ? -1 : __real_fsync(file);
}

int __real_rename(const char *from, const char *to);
int __wrap_rename(const char *from, const char *to) {
    return fails("rename " + nameOf(from) + " " + nameOf(to)) ? -1 : __real_rename(from, to);
}

} // extern "C"

} // namespace fernhop::freedesktop
