#pragma once

#include "platform/Application.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/service/DisplayWatch.h"

#include <functional>
#include <optional>
#include <vector>

namespace fernhop::freedesktop {

/// This process in its session: runs the main loop and ends it once, whoever asks for the end: the user, a
/// signal, or the session by taking its bus or its display away. Main thread only.
class SessionApplication : public Application {
  public:
    SessionApplication();

    /// Stops listening to signals and the bus.
    ~SessionApplication() override;
    SessionApplication(const SessionApplication &) = delete;
    SessionApplication &operator=(const SessionApplication &) = delete;

    /// Nothing on this desktop depends on the policy: what has no window is in no task list. It is
    /// remembered.
    void setActivationPolicy(ActivationPolicy newPolicy) override { policy = newPolicy; }
    [[nodiscard]] std::optional<ActivationPolicy> activationPolicy() const { return policy; }

    /// Asks the controller, and when that does not refuse, ends the main loop. The second of two calls does
    /// nothing.
    void terminate() override;

    /// Whom `terminate` asks.
    void setShouldTerminate(std::function<TerminateReply()> ask) { shouldTerminate = std::move(ask); }

    /// SIGTERM, SIGINT and SIGHUP end the application from now on as the user would.
    void endWithSignals();

    /// The end of the connection, which is the end of the session, ends the application. `bus` outlives this
    /// object.
    void endWithBus(GDBusConnection *bus);

    /// The end of the display that this process is connected to now ends the application, as it ends the
    /// session; to be called again when there may be a new connection.
    void endWithDisplay(const Environment &environment);

    /// Runs the main loop until the application has ended; returns at once when it already has.
    void run();

  private:
    static gboolean signalCame(gpointer self);
    static void busClosed(GDBusConnection *bus, gboolean remotePeerVanished, GError *error, gpointer self);

    GMainLoopPointer loop;
    std::optional<ActivationPolicy> policy;
    std::function<TerminateReply()> shouldTerminate;
    std::vector<guint> signalSources;
    GDBusConnection *watchedBus = nullptr;
    gulong busHandler = 0;
    std::optional<DisplayWatch> display;
    bool ended = false;
};

} // namespace fernhop::freedesktop
