#include "platform/linux/source/SenderEvidence.h"

namespace fernhop::freedesktop {
namespace {

/// What the desktop entry of Fernhop runs for links.
constexpr const char *linkProgram = "fernhop-open";

} // namespace

SenderEvidence::SenderEvidence(ApplicationMatcher &matcher, const Processes &processes,
                               const LaunchSignals &signals)
    : applications(matcher), runningProcesses(processes), launches(signals) {}

std::optional<std::string> SenderEvidence::senderOf(const LinkSender &sender) {
    // Of many ancestors none may be an application.
    const ApplicationMatcher::Occasion link(applications);
    return firstSource({[&] { return fromLaunchSignal(sender); }, [&] { return fromUnit(sender); },
                        [&] { return fromAncestors(sender); }, [&] { return inherited(sender); }});
}

bool SenderEvidence::isSignalPending(const LinkSender &sender) const {
    return launches.canCome() && sender.launchedPid && !launches.launchOf(*sender.launchedPid) &&
           runningProcesses.programOf(*sender.launchedPid) == linkProgram;
}

std::string SenderEvidence::launcherOf(const LinkSender &sender) const {
    std::string launcher = sender.controlGroup.value_or("");
    if (sender.parentPid)
        launcher +=
            '\n' +
            runningProcesses.programPathOf(*sender.parentPid).value_or(std::to_string(*sender.parentPid));
    return launcher;
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

std::optional<std::string> SenderEvidence::fromLaunchSignal(const LinkSender &sender) {
    const auto launch = sender.launchedPid ? launches.launchOf(*sender.launchedPid) : std::nullopt;
    return launch ? originOf(*launch) : std::nullopt;
}

/// The desktop file comes last: a program started in a terminal inherits the terminal's. For a link opener it
/// is the only evidence, and there it is right.
std::optional<std::string> SenderEvidence::originOf(const ApplicationLaunch &launch) {
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

/// The entry in the environment of the sender or of an ancestor: weaker than what is known of the processes
/// themselves, as a program started in a terminal inherits the terminal's entry.
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

/// The process and its ancestors, up to the session's first process or to Fernhop: what Fernhop launched was
/// not sent by Fernhop's parents.
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
