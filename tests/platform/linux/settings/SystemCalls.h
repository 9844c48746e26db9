#pragma once

#include <functional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// The calls to the system by which a file is read and replaced, as the code under test makes them (the
/// linker leads them here). While an object lives, it notes them and can make them fail.
class SystemCalls {
  public:
    SystemCalls();
    ~SystemCalls();
    SystemCalls(const SystemCalls &) = delete;
    SystemCalls &operator=(const SystemCalls &) = delete;

    /// "write FILE", "fsync FILE", "rename FILE FILE", "read FILE", by the last part of each path.
    std::vector<std::string> made;

    /// Asked before each call; an errno to fail with, or zero.
    std::function<int(const std::string &call)> failure;
};

} // namespace fernhop::freedesktop
