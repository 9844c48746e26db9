#pragma once

#include "platform/Workspace.h"

#include <optional>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

/// An application known by its desktop-file ID, or one that no desktop entry describes.
class DesktopApplication : public RunningApplication {
  public:
    explicit DesktopApplication(std::optional<std::string> desktopID) : id(std::move(desktopID)) {}

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override { return id; }

    /// From now on nobody knows which application it is.
    void forgetIdentifier() { id.reset(); }

  private:
    std::optional<std::string> id;
};

} // namespace fernhop::freedesktop
