#include "routing/SourceTracker.h"

#include <utility>

namespace fernhop {

namespace {

std::shared_ptr<RunningApplication> activatedApplication(const Notification &notification) {
    if (!notification.userInfo)
        return nullptr;
    const auto found = notification.userInfo->find(workspaceApplicationKey);
    return found == notification.userInfo->end()
               ? nullptr
               : std::dynamic_pointer_cast<RunningApplication>(found->second);
}

} // namespace

void SourceTracker::seed(std::shared_ptr<RunningApplication> frontmost, const std::string &ownBundleID) {
    if (frontmost && frontmost->bundleIdentifier() != ownBundleID)
        source = std::move(frontmost);
}

bool SourceTracker::applicationDidActivate(const Notification &notification, const std::string &ownBundleID) {
    auto application = activatedApplication(notification);
    if (!application)
        return false;
    const auto identifier = application->bundleIdentifier();
    if (!identifier || *identifier == ownBundleID)
        return false;
    source = std::move(application);
    return true;
}

std::optional<std::string> SourceTracker::sourceBundleID() const {
    return source ? source->bundleIdentifier() : std::nullopt;
}

} // namespace fernhop
