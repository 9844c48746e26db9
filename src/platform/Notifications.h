#pragma once

#include "platform/Object.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// Posted by the workspace's centre when an application comes to the front, which is in the user information
/// under `workspaceApplicationKey`.
inline constexpr std::string_view didActivateApplicationNotification =
    "NSWorkspaceDidActivateApplicationNotification";
inline constexpr std::string_view workspaceApplicationKey = "NSWorkspaceApplicationKey";

/// Posted by the distributed centre when the desktop changes between light and dark.
inline constexpr std::string_view themeChangedNotification = "AppleInterfaceThemeChangedNotification";

/// An event, with information from its poster.
struct Notification {
    /// Information from the poster, by key.
    using UserInfo = std::map<std::string, std::shared_ptr<Object>, std::less<>>;

    std::string name;
    std::optional<UserInfo> userInfo;
};

/// Delivers notifications to observers. Main thread only; observers are called on it.
class NotificationCenter {
  public:
    virtual ~NotificationCenter() = default;

    /// Calls `observer` for every notification with this name, from any poster, until the process ends.
    virtual void addObserver(std::string_view name, std::function<void(const Notification &)> observer) = 0;
};

} // namespace fernhop
