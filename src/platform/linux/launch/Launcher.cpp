#include "platform/linux/launch/Launcher.h"

#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/applications/GenericOpener.h"
#include "platform/linux/launch/BusActivation.h"
#include "platform/linux/launch/ChildExit.h"
#include "platform/linux/launch/LaunchScope.h"
#include "platform/linux/launch/Spawn.h"
#include "platform/linux/launch/StartupNotification.h"
#include "platform/linux/launch/TerminalEmulator.h"

#include <utility>

namespace fernhop::freedesktop {
namespace {

using Clock = std::chrono::steady_clock;

// What only asks for the default browser, and that is Fernhop, would send the link round in a circle.
std::optional<std::string> refusal(const DesktopEntry &entry) {
    if (isFernhop(entry))
        return "A link is never opened in Fernhop itself";
    if (isGenericOpener(entry))
        return entry.name + " would hand the link back to the default browser";
    return std::nullopt;
}

} // namespace

/// Tells the outcome of one launch exactly once: what is never decided counts as opened.
struct Launcher::Outcome {
    explicit Outcome(OpenCompletion whenDone) : completion(std::move(whenDone)) {}
    ~Outcome() { succeed(); }
    Outcome(const Outcome &) = delete;
    Outcome &operator=(const Outcome &) = delete;

    void succeed() { tell(std::nullopt); }
    void fail(std::string description) { tell(OpenError{std::move(description)}); }

  private:
    void tell(std::optional<OpenError> error) {
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
                  outcome = std::move(outcome)](const BusActivationResult &result) mutable {
        using Kind = BusActivationResult::Kind;
        if (watched.expired())
            return;
        if (result.kind == Kind::unavailable)
            return launchProgram(std::move(request), outcome);
        if (result.kind == Kind::failed)
            return outcome->fail(result.description);
        raise(request, std::nullopt);
        outcome->succeed();
    };
    openThroughBus(services.bus, request.entry.id, request.urls, request.tokens, std::move(ended));
}

void Launcher::launchProgram(LaunchRequest request, const std::shared_ptr<Outcome> &outcome) {
    auto launches = commands(request);
    if (auto *problem = std::get_if<OpenError>(&launches))
        return outcome->fail(std::move(problem->localizedDescription));
    for (auto &command : std::get<std::vector<Command>>(launches)) {
        const auto received = std::exchange(request.tokens, announced(request));
        if (!start(request, std::move(command), outcome) && request.tokens.startupID != received.startupID)
            withdrawStartup(services.environment.value("DISPLAY").value_or(""), *request.tokens.startupID);
        request.tokens = {};
    }
}

std::variant<std::vector<Launcher::Command>, OpenError>
Launcher::commands(const LaunchRequest &request) const {
    auto launches = execLaunches(request.entry, request.urls);
    if (launches.empty())
        return OpenError{request.entry.path + ": the Exec line cannot be used"};
    if (!request.entry.terminal)
        return launches;
    const auto terminal = terminalPrefix(services.environment.value("PATH").value_or(""));
    if (!terminal)
        return OpenError{request.entry.name + " needs a terminal, and none is installed"};
    for (auto &launch : launches)
        launch.insert(launch.begin(), terminal->begin(), terminal->end());
    return launches;
}

// On X11 a window may come to the front only with the identifier of a launch that the window manager knows.
// One that came with the link is announced already.
LaunchTokens Launcher::announced(const LaunchRequest &request) const {
    auto tokens = request.tokens;
    const auto display = services.environment.value("DISPLAY").value_or("");
    if (tokens.startupID || !request.activates || !request.entry.startupNotify || display.empty() ||
        isWaylandSession(services.environment))
        return tokens;
    tokens.startupID =
        announceStartup({display, request.entry.id, request.entry.name, request.entry.startupWMClass});
    return tokens;
}

bool Launcher::start(const LaunchRequest &request, Command command, const std::shared_ptr<Outcome> &outcome) {
    const auto program = command.front();
    const auto result = spawn({std::move(command),
                               launchEnvironment(services.environment, request.tokens, request.entry.path),
                               request.entry.workingDirectory, "GIO_LAUNCHED_DESKTOP_FILE_PID"});
    if (const auto *error = std::get_if<SpawnError>(&result)) {
        outcome->fail(program + ": " + g_strerror(error->code));
        return false;
    }
    started(std::get<pid_t>(result), request, outcome);
    return true;
}

void Launcher::started(pid_t child, const LaunchRequest &request, const std::shared_ptr<Outcome> &outcome) {
    if (services.bus != nullptr)
        moveToLaunchScope(services.bus, child, request.entry.id);
    children.watch(child, [outcome, start = Clock::now()](int waitStatus) {
        if (auto failure = launchFailure(waitStatus, Clock::now() - start))
            outcome->fail(std::move(*failure));
        else
            outcome->succeed();
    });
    raise(request, child);
}

void Launcher::raise(const LaunchRequest &request, std::optional<pid_t> process) const {
    if (request.activates && services.focus != nullptr)
        services.focus->raise({request.entry.id, process});
}

} // namespace fernhop::freedesktop
