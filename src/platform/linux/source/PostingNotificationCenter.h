#pragma once

#include "platform/Notifications.h"

#include <deque>
#include <utility>

namespace fernhop::freedesktop {

/// A notification centre whose notifications a part of the backend posts. Main thread only.
class PostingNotificationCenter : public NotificationCenter {
  public:
    void addObserver(std::string_view name, std::function<void(const Notification &)> observer) override {
        observers.emplace_back(name, std::move(observer));
    }

    /// Calls everyone who observes this notification, in the order in which they began; those who begin
    /// meanwhile are not called.
    void post(const Notification &notification) const {
        for (std::size_t i = 0, count = observers.size(); i < count; ++i)
            if (observers[i].first == notification.name)
                observers[i].second(notification);
    }

  private:
    // Not a vector: an observer that adds another one must not move from beneath itself.
    std::deque<std::pair<std::string, std::function<void(const Notification &)>>> observers;
};

} // namespace fernhop::freedesktop
