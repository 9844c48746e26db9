#pragma once

#include "platform/linux/base/Files.h"

#include <chrono>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

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
