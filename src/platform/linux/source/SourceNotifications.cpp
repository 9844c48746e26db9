#include "platform/linux/source/SourceNotifications.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace fernhop::freedesktop {
namespace {

constexpr std::size_t rememberedLaunches = 32;

} // namespace

SourceNotifications::SourceNotifications(FocusProvider &provider, SenderEvidence &senders,
                                         LaunchSignals &launches, PostingNotificationCenter &workspace)
    : focus(provider), evidence(senders), signals(launches), notifications(workspace) {
    focus.observe([this](std::shared_ptr<RunningApplication> application) { post(std::move(application)); });
}

void SourceNotifications::linkArrives(const LinkSender &sender, std::function<void()> handleLinks) {
    const auto launcher = evidence.launcherOf(sender);
    if (const auto earlier = waiting.find(launcher); earlier != waiting.end())
        return earlier->second.push_back({sender, std::move(handleLinks)});
    if (isFocusKnown())
        return handleLinks();
    const auto id = evidence.senderOf(sender);
    const bool isPending = !id && evidence.isSignalPending(sender);
    if (isPending && !sendsNoSignals(launcher)) {
        waiting[launcher].push_back({sender, std::move(handleLinks)});
        return signals.await(*sender.launchedPid, [this, launcher] { waitEnded(launcher); });
    }
    if (isPending)
        remember(*sender.launchedPid, launcher);
    postSender(id);
    handleLinks();
}

void SourceNotifications::waitEnded(const std::string &launcher) {
    const auto arrivals = waiting.extract(launcher).mapped();
    const auto &first = arrivals.front();
    if (!signals.launchOf(*first.sender.launchedPid))
        remember(*first.sender.launchedPid, launcher);
    postSender(evidence.senderOf(first.sender));
    first.handle();
    for (auto next = std::next(arrivals.begin()); next != arrivals.end(); ++next)
        linkArrives(next->sender, next->handle);
}

void SourceNotifications::remember(pid_t child, const std::string &launcher) {
    untold.push_back({child, launcher});
    if (untold.size() > rememberedLaunches)
        untold.pop_front();
}

/// A launcher of which a signal has come late, as on a busy machine, does send them.
bool SourceNotifications::sendsNoSignals(const std::string &launcher) {
    const auto isOfIt = [&](const UntoldLaunch &launch) { return launch.launcher == launcher; };
    const auto wasTold = [&](const UntoldLaunch &launch) {
        return isOfIt(launch) && signals.launchOf(launch.child);
    };
    if (std::ranges::any_of(untold, wasTold))
        std::erase_if(untold, isOfIt);
    return std::ranges::any_of(untold, isOfIt);
}

void SourceNotifications::postSender(const std::optional<std::string> &id) {
    // Evidence is about one link. When the next has none, its source is unknown and not the last sender.
    if (lastSender)
        lastSender->forgetIdentifier();
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
