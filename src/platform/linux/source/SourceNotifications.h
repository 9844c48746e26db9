#pragma once

#include "platform/Notifications.h"
#include "platform/linux/source/FocusProvider.h"
#include "platform/linux/source/LinkDelivery.h"
#include "platform/linux/source/SenderEvidence.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

/// A notification centre whose notifications are posted by the backend. Main thread only.
class PostingNotificationCenter : public NotificationCenter {
  public:
    void addObserver(std::string_view name, std::function<void(const Notification &)> observer) override {
        observers.emplace_back(name, std::move(observer));
    }

    /// Calls the observers of this notification, in the order in which they were added. One that is added
    /// during the call is not called.
    void post(const Notification &notification) const {
        for (std::size_t i = 0, count = observers.size(); i < count; ++i)
            if (observers[i].first == notification.name)
                observers[i].second(notification);
    }

  private:
    // A vector would move an observer that adds another one while it is being called.
    std::deque<std::pair<std::string, std::function<void(const Notification &)>>> observers;
};

/// Posts the focused application to the workspace's observers; where the session does not show which it is,
/// the sender of a link, just before the link is handled. Main thread only.
class SourceNotifications {
  public:
    /// From now on posts whenever another application gets the focus. All outlive this object, and the
    /// provider has no other observer.
    SourceNotifications(FocusProvider &provider, SenderEvidence &senders, LaunchSignals &launches,
                        PostingNotificationCenter &workspace);

    /// Links of this sender have arrived: calls `handle` when their source is posted. At once, or from the
    /// main loop within a second when the sender is still to be told by a signal of its launcher. The links
    /// of one launcher stay in order; links of others do not wait.
    void linkArrives(const LinkSender &sender, std::function<void()> handle);

  private:
    struct Arrival {
        LinkSender sender;
        std::function<void()> handle;
    };

    /// A process about whose launch no signal had come when its links were handled.
    struct UntoldLaunch {
        pid_t child;
        std::string launcher;
    };

    void postSender(const std::optional<std::string> &id);
    void waitEnded(const std::string &launcher);
    void remember(pid_t child, const std::string &launcher);
    [[nodiscard]] bool sendsNoSignals(const std::string &launcher);
    void post(std::shared_ptr<RunningApplication> application) const;
    [[nodiscard]] bool isFocusKnown() const;

    FocusProvider &focus;
    SenderEvidence &evidence;
    LaunchSignals &signals;
    PostingNotificationCenter &notifications;
    std::map<std::string, std::deque<Arrival>> waiting; ///< by launcher; the first's signal is waited for
    std::deque<UntoldLaunch> untold;                    ///< the latest last
    std::shared_ptr<DesktopApplication> lastSender;
};

} // namespace fernhop::freedesktop
