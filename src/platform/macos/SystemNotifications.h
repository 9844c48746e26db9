#pragma once

#include "platform/Notifications.h"
#include "platform/macos/Reference.h"

#import <Foundation/Foundation.h>

#include <vector>

@class FernhopObserver;

namespace fernhop::macos {

/// The notification with what it tells of applications, as the core knows it.
[[nodiscard]] Notification fromNSNotification(NSNotification *notification);

/// A notification centre of the system.
class SystemNotifications : public NotificationCenter {
  public:
    /// Observers are called through `observerSelector`: `activeApplicationDidChange:` or
    /// `systemAppearanceDidChange`.
    SystemNotifications(NSNotificationCenter *notificationCenter, SEL observerSelector)
        : center(notificationCenter), selector(observerSelector) {}
    /// The centre forgets the observers.
    ~SystemNotifications() override;
    SystemNotifications(const SystemNotifications &) = delete;
    SystemNotifications &operator=(const SystemNotifications &) = delete;

    void addObserver(std::string_view name, std::function<void(const Notification &)> observer) override;

  private:
    Reference<NSNotificationCenter> center;
    SEL selector;
    std::vector<Reference<FernhopObserver>> observers;
};

} // namespace fernhop::macos
