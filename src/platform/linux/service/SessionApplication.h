#pragma once

#include "platform/Application.h"
#include "platform/linux/base/Environment.h"
#include "platform/linux/base/GPointer.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Reports when the X server or the Wayland compositor of the session has closed its connections. It watches
/// the sockets of this process, whichever library opened them, with a high priority in the GLib main loop:
/// client libraries may end the process at once when they find their connection broken. Main thread only.
class DisplayWatch {
  public:
    /// `onEnded` is called once for each connection that the display has closed.
    DisplayWatch(const Environment &environment, std::function<void()> onEnded);
    ~DisplayWatch();
    DisplayWatch(const DisplayWatch &) = delete;
    DisplayWatch &operator=(const DisplayWatch &) = delete;

    /// Watches the connections that exist now, over local sockets only; call it again when there may be more.
    void watchConnections();

  private:
    struct Connection {
        guint source = 0;
        std::string display; ///< address of the peer
    };

    static gboolean hungUp(gint descriptor, GIOCondition condition, gpointer self);
    [[nodiscard]] bool isDisplay(const std::string &address) const;

    const std::string compositor; ///< path of its socket; empty: none
    const std::function<void()> onEnded;
    std::map<int, Connection> connections; ///< by their descriptors
};

/// Runs the main loop until the application ends: because the user asked, by a signal, or because the session
/// closed its bus or its display. Main thread only.
class SessionApplication : public Application {
  public:
    SessionApplication();

    /// Stops listening to signals and the bus.
    ~SessionApplication() override;
    SessionApplication(const SessionApplication &) = delete;
    SessionApplication &operator=(const SessionApplication &) = delete;

    /// Only remembers the policy: on this desktop an application without windows is in no task list anyway.
    void setActivationPolicy(ActivationPolicy newPolicy) override { policy = newPolicy; }
    [[nodiscard]] std::optional<ActivationPolicy> activationPolicy() const { return policy; }

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

    /// Ends the application when a display that this process is connected to now closes, which is the end of
    /// the session. Call it again when there may be a new connection.
    void endWithDisplay(const Environment &environment);

    /// Runs the main loop until the application has ended or paused; returns at once when it has ended.
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
