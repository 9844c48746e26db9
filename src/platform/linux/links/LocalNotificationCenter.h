#pragma once

#include "platform/Notifications.h"

#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// Notifications from one part of this process to another. Main thread only.
class LocalNotificationCenter : public NotificationCenter {
  public:
    void addObserver(std::string_view name, std::function<void(const Notification &)> observer) override {
        observers.push_back({std::string(name), std::move(observer)});
    }

    /// Calls the observers of the notification's name, in the order in which they came.
    void post(const Notification &notification) const {
        // By index: an observer may add another.
        for (std::size_t index = 0; index < observers.size(); ++index) {
            if (observers[index].name == notification.name) {
                const auto observer = observers[index].observer;
                observer(notification);
            }
        }
    }

  private:
    struct Registered {
        std::string name;
        std::function<void(const Notification &)> observer;
    };

    std::vector<Registered> observers;
};

} // namespace fernhop::freedesktop
