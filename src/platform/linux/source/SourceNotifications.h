#pragma once

#include "platform/linux/source/DesktopApplication.h"
#include "platform/linux/source/FocusProvider.h"
#include "platform/linux/source/LinkDelivery.h"
#include "platform/linux/source/PostingNotificationCenter.h"
#include "platform/linux/source/SenderEvidence.h"

#include <memory>

namespace fernhop::freedesktop {

/// Tells the workspace's observers which application the user is in: the one in front, and where the session
/// does not tell which that is, the sender of a link, just before the link is handled. Main thread only.
class SourceNotifications {
  public:
    /// Posts from now on whenever another application comes to the front. All outlive this object, and the
    /// provider has no other observer.
    SourceNotifications(FocusProvider &provider, SenderEvidence &senders,
                        PostingNotificationCenter &workspace);

    /// A link of this sender is about to be handled.
    void linkArrives(const LinkSender &sender);

  private:
    void post(std::shared_ptr<RunningApplication> application) const;
    [[nodiscard]] bool focusTells() const;

    FocusProvider &focus;
    SenderEvidence &evidence;
    PostingNotificationCenter &notifications;
    std::shared_ptr<DesktopApplication> lastSender;
};

} // namespace fernhop::freedesktop
