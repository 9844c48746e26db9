#pragma once

#include "platform/Notifications.h"

#include <utility>
#include <vector>

namespace fernhop::fakes {

/// Delivers the notifications that a test posts.
class FakeNotificationCenter : public NotificationCenter {
  public:
    using Observer = std::function<void(const Notification &)>;

    std::vector<std::pair<std::string, Observer>> observers;
    std::function<void()> atObserver; ///< called after an observer was added

    void addObserver(std::string_view name, Observer observer) override {
        observers.emplace_back(name, std::move(observer));
        if (atObserver)
            atObserver();
    }

    void post(const Notification &notification) const {
        for (const auto &[name, observer] : observers)
            if (name == notification.name)
                observer(notification);
    }
};

} // namespace fernhop::fakes
