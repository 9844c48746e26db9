#pragma once

#include <optional>
#include <string>

namespace fernhop {

/// The system's record of which application handles which URL scheme. Main thread only.
class LaunchServices {
  public:
    virtual ~LaunchServices() = default;

    /// The bundle identifier of the handler of `scheme` ("http", "https"); nothing when there is none.
    [[nodiscard]] virtual std::optional<std::string>
    copyDefaultHandlerForUrlScheme(const std::string &scheme) const = 0;

    /// Makes `bundleID` the handler of `scheme`. False when the system refused; callers may also check the
    /// handler afterwards.
    virtual bool setDefaultHandlerForUrlScheme(const std::string &scheme, const std::string &bundleID) = 0;
};

} // namespace fernhop
