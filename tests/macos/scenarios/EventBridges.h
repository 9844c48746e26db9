#pragma once

#include "fakes/FakeLinkEvents.h"
#include "fakes/FakeNotificationCenter.h"
#include "platform/macos/AppleEventLinks.h"
#include "platform/macos/SystemNotifications.h"

namespace fernhop::macos {

/// What is delivered in memory arrives as an Apple Event. What is in memory outlives the bridge.
class LinksBridge : public LinkEvents {
  public:
    explicit LinksBridge(fakes::FakeLinkEvents &inMemory) : memory(inMemory) {}

    void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) override;

  private:
    fakes::FakeLinkEvents &memory;
    AppleEventLinks system;
};

/// What is posted in memory is posted in the centre of the system that `backend` observes. Both outlive the
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
