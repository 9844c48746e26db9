#pragma once

#include <unistd.h>

#include <utility>

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

  private:
    int number;
};

} // namespace fernhop::freedesktop
