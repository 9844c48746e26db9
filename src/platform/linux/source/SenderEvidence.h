#pragma once

#include "platform/linux/base/Processes.h"
#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/LaunchSignals.h"
#include "platform/linux/source/LinkDelivery.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Finds out which application sent a link, from what is known about the process that delivered it. The
/// answer is an installed application that a user can be in: never Fernhop itself, a part of the desktop, or
/// a program that opens links for others. Main thread only.
class SenderEvidence {
  public:
    /// All outlive this object.
    SenderEvidence(ApplicationMatcher &matcher, const Processes &processes, const LaunchSignals &signals);

    /// The sender's desktop-file ID, by the best evidence there is: GIO's signal of the launch, the sender's
    /// systemd unit, its ancestors, and the entry that one of them was launched from; nothing when there is
    /// no such evidence.
    [[nodiscard]] std::optional<std::string> senderOf(const LinkSender &sender);

    /// Whether GIO's signal of the launch may be on its way, and say more than `senderOf` does. GIO sends it
    /// after it has started the process, and `fernhop-open` may be faster; that program waits for our answer,
    /// so finding it still running means that it was launched just now.
    [[nodiscard]] bool isSignalPending(const LinkSender &sender) const;

    /// What tells one launcher of `fernhop-open` from others: its program and its control group, as bytes.
    [[nodiscard]] std::string launcherOf(const LinkSender &sender) const;

    /// Whether a user can be in this application and open a link there.
    [[nodiscard]] bool canBeSource(const std::optional<std::string> &desktopID) const;

  private:
    using Answer = std::optional<std::string>;

    Answer fromLaunchSignal(const LinkSender &sender);
    Answer originOf(const ApplicationLaunch &launch);
    Answer fromUnit(const LinkSender &sender);
    Answer fromAncestors(const LinkSender &sender);
    Answer inherited(const LinkSender &sender);
    Answer firstSource(const std::vector<std::function<Answer()>> &searches) const;
    [[nodiscard]] std::vector<pid_t> ancestorsFrom(std::optional<pid_t> process) const;

    ApplicationMatcher &applications;
    const Processes &runningProcesses;
    const LaunchSignals &launches;
};

} // namespace fernhop::freedesktop
