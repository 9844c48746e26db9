#pragma once

#include "platform/LaunchServices.h"

namespace fernhop::macos {

/// Launch Services.
class SystemLaunchServices : public LaunchServices {
  public:
    [[nodiscard]] std::optional<std::string>
    copyDefaultHandlerForUrlScheme(const std::string &scheme) const override;
    bool setDefaultHandlerForUrlScheme(const std::string &scheme, const std::string &bundleID) override;
};

} // namespace fernhop::macos
