#include "platform/linux/source/SourceNotifications.h"

#include <utility>

namespace fernhop::freedesktop {

SourceNotifications::SourceNotifications(FocusProvider &provider, SenderEvidence &senders,
                                         PostingNotificationCenter &workspace)
    : focus(provider), evidence(senders), notifications(workspace) {
    focus.observe([this](std::shared_ptr<RunningApplication> application) { post(std::move(application)); });
}

void SourceNotifications::linkArrives(const LinkSender &sender) {
    if (isFocusKnown())
        return;
    // Evidence is about one link. When the next has none, its source is unknown and not the last sender.
    if (lastSender)
        lastSender->forgetIdentifier();
    const auto id = evidence.senderOf(sender);
    lastSender = id ? std::make_shared<DesktopApplication>(id) : nullptr;
    if (lastSender)
        post(lastSender);
}

bool SourceNotifications::isFocusKnown() const {
    const auto front = focus.frontmost();
    return front && evidence.canBeSource(front->bundleIdentifier());
}

void SourceNotifications::post(std::shared_ptr<RunningApplication> application) const {
    Notification::UserInfo information;
    information.emplace(workspaceApplicationKey, std::move(application));
    notifications.post({std::string(didActivateApplicationNotification), std::move(information)});
}

} // namespace fernhop::freedesktop
