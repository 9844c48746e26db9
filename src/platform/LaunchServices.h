#pragma once

#include <optional>
#include <string>

namespace fernhop {

/// The system's record of which application handles which URL scheme. Main thread only.
class LaunchServices {
  public:
    virtual ~LaunchServices() = default;

    /// The bundle identifier of the handler that is set for `scheme` ("http", "https"); nothing when none is
    /// set.
    [[nodiscard]] virtual std::optional<std::string>
    copyDefaultHandlerForUrlScheme(const std::string &scheme) const = 0;

    /// Makes `bundleID` the handler of `scheme`. False when the system refused; callers may rely on the next
    /// read instead.
    virtual bool setDefaultHandlerForUrlScheme(const std::string &scheme, const std::string &bundleID) = 0;
};

} // namespace fernhop
