#include "platform/linux/launch/Launcher.h"

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/launch/BusLaunch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace fernhop::freedesktop {
namespace {

using Clock = std::chrono::steady_clock;

// How long a launch waits for a process, a descriptor or memory.
constexpr std::chrono::seconds shortagePatience{30};
constexpr std::chrono::milliseconds retryPause{200};

bool isShortage(const Failure &failure) {
    constexpr std::array numbers = {EAGAIN, EMFILE, ENFILE, ENOMEM};
    return std::ranges::find(numbers, failure.errorNumber) != numbers.end();
}

// A program that opens links in the default browser would send them back to Fernhop, round in a circle.
std::optional<std::string> refusal(const DesktopEntry &entry) {
    if (isFernhop(entry))
        return "A link is never opened in Fernhop itself";
    if (isGenericOpener(entry))
        return entry.name.value_or(entry.id) + " would hand the link back to the default browser";
    return std::nullopt;
}

} // namespace

/// Reports the outcome of one launch exactly once: one that is never decided counts as opened.
struct Launcher::Outcome {
    explicit Outcome(OpenCompletion whenDone) : completion(std::move(whenDone)) {}
    ~Outcome() { succeed(); }
    Outcome(const Outcome &) = delete;
    Outcome &operator=(const Outcome &) = delete;

    void succeed() { complete(std::nullopt); }
    void fail(std::string description) { complete(OpenError{std::move(description)}); }

  private:
    void complete(std::optional<OpenError> error) {
        if (const auto call = std::exchange(completion, nullptr))
            call(nullptr, std::move(error));
    }

    OpenCompletion completion;
};

Launcher::Launcher(LauncherServices dependencies) : services(std::move(dependencies)) {}

Launcher::~Launcher() = default;

void Launcher::launch(LaunchRequest request, OpenCompletion completion) {
    auto outcome = std::make_shared<Outcome>(std::move(completion));
    if (auto refused = refusal(request.entry))
        return outcome->fail(std::move(*refused));
    request.tokens = tokensForLaunch(std::move(request.tokens), isWaylandSession(services.environment));
    if (request.entry.dbusActivatable && services.bus != nullptr)
        launchOverBus(std::move(request), std::move(outcome));
    else
        launchProgram(std::move(request), outcome);
}

void Launcher::launchOverBus(LaunchRequest request, std::shared_ptr<Outcome> outcome) {
    auto ended = [this, watched = std::weak_ptr(alive), request,
                  outcome = std::move(outcome)](const Result<BusOpening> &opening) mutable {
        if (watched.expired())
            return;
        if (!opening)
            return outcome->fail(opening.failure().reason);
        if (*opening == BusOpening::unavailable)
            return launchProgram(std::move(request), outcome);
        raise(request, std::nullopt);
        outcome->succeed();
    };
    openThroughBus(services.bus, request.entry.id, request.urls, request.tokens, std::move(ended));
}

void Launcher::launchProgram(LaunchRequest request, const std::shared_ptr<Outcome> &outcome) {
    // Behind those that wait, so that links stay in order.
    if (waiting.empty() && startAll(request, outcome))
        return;
    waiting.push_back({std::move(request), outcome, Clock::now() + shortagePatience});
    if (!retry.isRunning())
        retry.start(retryPause, [this] { startWaiting(); });
}

Result<> Launcher::startAll(LaunchRequest &request, const std::shared_ptr<Outcome> &outcome) {
    auto commands = launchCommands(request.entry, request.urls, services.environment.value("PATH", ""));
    if (!commands) {
        outcome->fail(commands.failure().reason);
        return Success{};
    }
    const bool isOneForEachLink = commands->size() == request.urls.size();
    for (auto &command : *commands) {
        const auto received = std::exchange(request.tokens, announced(request));
        const auto started = start(request, std::move(command), outcome);
        if (!started && request.tokens.startupID != received.startupID)
            withdrawStartup(services.environment.value("DISPLAY", ""), *request.tokens.startupID);
        if (!started && isShortage(started.failure())) {
            request.tokens = received;
            return started;
        }
        request.tokens = {};
        if (isOneForEachLink)
            request.urls.erase(request.urls.begin());
    }
    return Success{};
}

void Launcher::startWaiting() {
    while (!waiting.empty()) {
        auto &next = waiting.front();
        if (const auto started = startAll(next.request, next.outcome); !started) {
            if (Clock::now() < next.end)
                break;
            next.outcome->fail(started.failure().reason);
        }
        waiting.pop_front();
    }
    // A child of this process ends the wait sooner; but others' may be what takes up the system.
    if (waiting.empty())
        retry.stop();
    else
        retry.start(retryPause, [this] { startWaiting(); });
}

// On X11 a window may come to the front only with the identifier of a launch that was announced to the window
// manager. One that came with the link was announced by the sender.
LaunchTokens Launcher::announced(const LaunchRequest &request) const {
    auto tokens = request.tokens;
    if (!tokens.startupID && request.activates && request.entry.startupNotify && services.focus != nullptr)
        tokens.startupID = services.focus->announceStartup(
            {request.entry.id, request.entry.name.value_or(""), request.entry.startupWMClass});
    return tokens;
}

Result<> Launcher::start(const LaunchRequest &request, Command command,
                         const std::shared_ptr<Outcome> &outcome) {
    const auto program = command.front();
    const auto child = spawn({std::move(command),
                              launchEnvironment(services.environment, request.tokens, request.entry.path),
                              request.entry.workingDirectory});
    if (!child) {
        const Failure failure{program + ": " + child.failure().reason, child.failure().errorNumber};
        if (!isShortage(failure))
            outcome->fail(failure.reason);
        return failure;
    }
    if (services.bus != nullptr)
        moveToLaunchScope(services.bus, *child, request.entry.id);
    children.watch(*child, [this, outcome, start = Clock::now()](int waitStatus) {
        if (auto failure = launchFailure(waitStatus, Clock::now() - start))
            outcome->fail(std::move(failure->reason));
        else
            outcome->succeed();
        startWaiting();
    });
    raise(request, *child);
    return Success{};
}

void Launcher::raise(const LaunchRequest &request, std::optional<pid_t> process) const {
    if (request.activates && services.focus != nullptr)
        services.focus->raise({request.entry.id, process});
}

} // namespace fernhop::freedesktop
