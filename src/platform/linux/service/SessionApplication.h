#pragma once

#include "platform/Application.h"
#include "platform/linux/base/GPointer.h"

#include <functional>
#include <vector>

namespace fernhop::freedesktop {

/// Runs the main loop until the application ends: because the user asked, by a signal, or because the session
/// closed its bus. Main thread only.
class SessionApplication : public Application {
  public:
    SessionApplication();

    /// Stops listening to signals and the bus.
    ~SessionApplication() override;
    SessionApplication(const SessionApplication &) = delete;
    SessionApplication &operator=(const SessionApplication &) = delete;

    /// Does nothing: on this desktop an application without windows is in no task list anyway.
    void setActivationPolicy(ActivationPolicy) override {}

    /// Asks the controller and, when it does not refuse, ends the main loop. Further calls do nothing.
    void terminate() override;

    /// Leaves the main loop without ending the application: `run` may be called again.
    void pause() { g_main_loop_quit(loop.get()); }

    /// Sets the question that `terminate` asks.
    void setShouldTerminate(std::function<TerminateReply()> ask) { shouldTerminate = std::move(ask); }

    /// SIGTERM, SIGINT and SIGHUP end the application from now on as the user would.
    void endWithSignals();

    /// Ends the application when the connection closes, which is the end of the session. `bus` outlives this
    /// object.
    void endWithBus(GDBusConnection *bus);

    /// Runs the main loop until the application has ended or paused; returns at once when it has ended.
    void run();

  private:
    GMainLoopPointer loop;
    std::function<TerminateReply()> shouldTerminate;
    std::vector<guint> signalSources;
    GDBusConnection *watchedBus = nullptr;
    gulong busHandler = 0;
    bool ended = false;
};

} // namespace fernhop::freedesktop
