#pragma once

#include "platform/Object.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// Posted by the workspace's centre when an application comes to the front. Its user information holds the
/// application under `workspaceApplicationKey`.
inline constexpr std::string_view didActivateApplicationNotification =
    "NSWorkspaceDidActivateApplicationNotification";
inline constexpr std::string_view workspaceApplicationKey = "NSWorkspaceApplicationKey";

/// Posted by the distributed centre when the desktop changes between light and dark.
inline constexpr std::string_view themeChangedNotification = "AppleInterfaceThemeChangedNotification";

/// Something that happened, with what its poster tells about it.
struct Notification {
    /// What the poster tells, by key.
    using UserInfo = std::map<std::string, std::shared_ptr<Object>, std::less<>>;

    std::string name;
    std::optional<UserInfo> userInfo;
};

/// Delivers notifications to its observers. Main thread only: observers are called on it.
class NotificationCenter {
  public:
    virtual ~NotificationCenter() = default;

    /// Calls `observer` for every notification of this name, from any poster, until the process ends.
    virtual void addObserver(std::string_view name, std::function<void(const Notification &)> observer) = 0;
};

} // namespace fernhop
