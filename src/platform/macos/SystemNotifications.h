#pragma once

#include "platform/Notifications.h"
#include "platform/macos/Reference.h"

#import <Foundation/Foundation.h>

#include <vector>

namespace fernhop::macos {

/// The core's notification for one of the system, with its application.
[[nodiscard]] Notification fromNSNotification(NSNotification *notification);

/// A notification centre of the system.
class SystemNotifications : public NotificationCenter {
  public:
    /// The centre of the shared workspace, whose observers are called through `activeApplicationDidChange:`.
    [[nodiscard]] static SystemNotifications ofWorkspace();
    /// The distributed centre, whose observers are called through `systemAppearanceDidChange`.
    [[nodiscard]] static SystemNotifications distributed();

    /// Removes the observers from the centre.
    ~SystemNotifications() override;
    SystemNotifications(const SystemNotifications &) = delete;
    SystemNotifications &operator=(const SystemNotifications &) = delete;

    void addObserver(std::string_view name, std::function<void(const Notification &)> observer) override;

  private:
    SystemNotifications(NSNotificationCenter *notificationCenter, SEL observerSelector);

    Reference<NSNotificationCenter> center;
    SEL selector;
    std::vector<Reference<NSObject>> observers;
};

} // namespace fernhop::macos
