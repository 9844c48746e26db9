#pragma once

namespace fernhop::freedesktop {

/// Keeps a `WaylandWindows` up to date as long as it lives.
class WindowSource {
  public:
    virtual ~WindowSource() = default;
};

} // namespace fernhop::freedesktop
