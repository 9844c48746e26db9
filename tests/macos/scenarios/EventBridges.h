#pragma once

#include "fakes/FakeLinkEvents.h"
#include "fakes/FakeNotificationCenter.h"
#include "platform/macos/AppleEventLinks.h"
#include "platform/macos/SystemNotifications.h"

namespace fernhop::macos {

/// Delivers the links of the fake as Apple Events. The fake must outlive the bridge.
class LinksBridge : public LinkEvents {
  public:
    explicit LinksBridge(fakes::FakeLinkEvents &inMemory) : memory(inMemory) {}

    void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) override;

  private:
    fakes::FakeLinkEvents &memory;
    AppleEventLinks system;
};

/// Posts the notifications of the fake in the system's centre that `backend` observes. Both must outlive the
/// bridge.
class NotificationsBridge : public NotificationCenter {
  public:
    NotificationsBridge(fakes::FakeNotificationCenter &inMemory, NotificationCenter &backend,
                        NSNotificationCenter *notificationCenter)
        : memory(inMemory), system(backend), center(notificationCenter) {}

    void addObserver(std::string_view name, std::function<void(const Notification &)> observer) override;

  private:
    fakes::FakeNotificationCenter &memory;
    NotificationCenter &system;
    Reference<NSNotificationCenter> center;
};

} // namespace fernhop::macos
