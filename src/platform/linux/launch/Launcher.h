#pragma once

#include "platform/Workspace.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Result.h"
#include "platform/linux/base/Timer.h"
#include "platform/linux/launch/ChildProcesses.h"
#include "platform/linux/launch/LaunchCommand.h"
#include "platform/linux/source/FocusProvider.h"

#include <gio/gio.h>

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// An application and what it is to open.
struct LaunchRequest {
    DesktopEntry entry;
    std::vector<std::string> urls;
    LaunchTokens tokens; ///< as they came with the links
    bool activates = true;

    /// Kept until the links have been handled: the application runs, took them over the bus, or cannot be
    /// started. May be null.
    std::shared_ptr<const void> delivery;
};

/// What launching needs.
struct LauncherServices {
    Environment environment; ///< this process's, as it was before any library changed it
    GDBusConnection *bus;    ///< the session bus; null: there is none. Outlives the launcher
    FocusProvider *focus;    ///< brings windows to the front; null: nothing does. Outlives the launcher
};

/// Opens URLs in applications: directly, without a shell or a helper program, so that every failure is known.
/// Main thread only; outcomes come from the main loop.
class Launcher {
  public:
    explicit Launcher(LauncherServices services);

    /// Applications that still run count as opened from now on.
    ~Launcher();
    Launcher(const Launcher &) = delete;
    Launcher &operator=(const Launcher &) = delete;

    /// Opens the links. `completion` is called once: with an error when the application cannot be started or
    /// ends soon with the status of a failed start, without one when it took the links or when it ends later.
    /// Programs for which the system has no process, descriptor or memory left are started when it has again,
    /// in their order, or fail after half a minute.
    void launch(LaunchRequest request, OpenCompletion completion);

  private:
    struct Outcome;

    /// A launch in a shortage.
    struct Waiting {
        LaunchRequest request;
        std::shared_ptr<Outcome> outcome;
        std::chrono::steady_clock::time_point end; ///< when it fails
    };

    void launchOverBus(LaunchRequest request, std::shared_ptr<Outcome> outcome);
    void launchProgram(LaunchRequest request, const std::shared_ptr<Outcome> &outcome);
    /// Starts the program for each link. Fails only for a shortage that may pass; `request` then is what
    /// remains.
    [[nodiscard]] Result<> startAll(LaunchRequest &request, const std::shared_ptr<Outcome> &outcome);
    [[nodiscard]] Result<> start(const LaunchRequest &request, Command command,
                                 const std::shared_ptr<Outcome> &outcome);
    void startWaiting();
    [[nodiscard]] LaunchTokens announced(const LaunchRequest &request) const;
    void raise(const LaunchRequest &request, std::optional<pid_t> process) const;

    LauncherServices services;
    ChildWatches children;
    std::deque<Waiting> waiting; ///< in the order of the links
    Timer retry;                 ///< runs while a launch waits
    std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
};

} // namespace fernhop::freedesktop
