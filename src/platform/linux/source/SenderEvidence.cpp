#include "platform/linux/source/SenderEvidence.h"

#include "platform/linux/source/ProgramNames.h"

namespace fernhop::freedesktop {

namespace {

/// What the desktop entry of Fernhop runs for links.
constexpr const char *linkProgram = "fernhop-open";

} // namespace

SenderEvidence::SenderEvidence(ApplicationMatcher &matcher, const Processes &processes,
                               const LaunchSignals &signals)
    : applications(matcher), runningProcesses(processes), launches(signals) {}

std::optional<std::string> SenderEvidence::senderOf(const LinkSender &sender) {
    return firstSource({[&] { return fromLaunch(sender); }, [&] { return fromUnit(sender); },
                        [&] { return fromAncestors(sender); }, [&] { return inherited(sender); },
                        [&] { return fromLaunchToBeTold(sender); }});
}

bool SenderEvidence::canBeSource(const std::optional<std::string> &desktopID) const {
    return desktopID && *desktopID != applications.ownIdentifier() && !isDesktopShell(*desktopID);
}

std::optional<std::string>
SenderEvidence::firstSource(const std::vector<std::function<Answer()>> &searches) const {
    for (const auto &search : searches)
        if (auto found = search(); canBeSource(found))
            return found;
    return std::nullopt;
}

std::optional<std::string> SenderEvidence::fromLaunch(const LinkSender &sender) {
    const auto launch = sender.launchedPid ? launches.launchOf(*sender.launchedPid) : std::nullopt;
    return launch ? launcherOf(*launch) : std::nullopt;
}

/// GIO launches a process first and tells of it afterwards, and `fernhop-open` may be faster. It waits for
/// us, so finding it there means that it was launched just now.
std::optional<std::string> SenderEvidence::fromLaunchToBeTold(const LinkSender &sender) {
    if (!sender.launchedPid || runningProcesses.programOf(*sender.launchedPid) != linkProgram)
        return std::nullopt;
    const auto launch = launches.awaitLaunchOf(*sender.launchedPid);
    return launch ? launcherOf(*launch) : std::nullopt;
}

/// The desktop file comes last: whoever was started in a terminal inherited the terminal's. An opener of
/// links has nothing else to go by, and there it is right.
std::optional<std::string> SenderEvidence::launcherOf(const ApplicationLaunch &launch) {
    return firstSource(
        {[&] { return launch.origin ? applications.applicationOf(*launch.origin) : std::nullopt; },
         [&] { return applications.applicationRunning(launch.originProgram); },
         [&] { return applications.applicationNamed(launch.originProgram); },
         [&] { return applications.applicationNamed(launch.originDesktopFile); }});
}

std::optional<std::string> SenderEvidence::fromUnit(const LinkSender &sender) {
    return sender.controlGroup ? applications.applicationOfControlGroup(*sender.controlGroup) : std::nullopt;
}

std::optional<std::string> SenderEvidence::fromAncestors(const LinkSender &sender) {
    const auto ancestors = ancestorsFrom(sender.parentPid);
    std::vector<std::function<Answer()>> searches;
    for (const pid_t process : ancestors)
        searches.emplace_back([this, process] { return applications.applicationOf(process); });
    for (const pid_t process : ancestors)
        searches.emplace_back([this, process] {
            const auto group = runningProcesses.controlGroupOf(process);
            return group ? applications.applicationOfControlGroup(*group) : std::nullopt;
        });
    return firstSource(searches);
}

/// What the environment of the sender says of itself or of any ancestor: weaker than all that is known of the
/// processes themselves, as whoever is started in a terminal inherits the terminal's entry.
std::optional<std::string> SenderEvidence::inherited(const LinkSender &sender) {
    std::vector<std::function<Answer()>> searches;
    if (sender.desktopFile)
        searches.emplace_back([&] { return applications.applicationNamed(*sender.desktopFile); });
    for (const pid_t process : ancestorsFrom(sender.parentPid))
        searches.emplace_back([this, process] {
            const auto file = runningProcesses.variableOf(process, "GIO_LAUNCHED_DESKTOP_FILE");
            return file ? applications.applicationNamed(*file) : std::nullopt;
        });
    return firstSource(searches);
}

/// Up to the first process of the session, or to ourselves: what we launched was not sent by our parents.
std::vector<pid_t> SenderEvidence::ancestorsFrom(std::optional<pid_t> process) const {
    constexpr std::size_t deepest = 32;
    std::vector<pid_t> ancestors;
    while (process && *process > 1 && *process != applications.ownProcess() && ancestors.size() < deepest) {
        ancestors.push_back(*process);
        process = runningProcesses.parentOf(*process);
    }
    return ancestors;
}

} // namespace fernhop::freedesktop
