#pragma once

#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/Timer.h"

#include <sys/types.h>

#include <deque>
#include <functional>
#include <list>
#include <optional>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

/// A launch of an application through GIO.
struct ApplicationLaunch {
    pid_t child = 0;               ///< the process that was started
    std::optional<pid_t> origin;   ///< the process that started it
    std::string originProgram;     ///< the program name of that process; may be empty
    std::string originDesktopFile; ///< path of the desktop entry that it, or an ancestor, came from

    bool operator==(const ApplicationLaunch &) const = default;
};

/// Listens to the session bus for the signal `Launched` of `org.gtk.gio.DesktopAppInfo`, which GLib sends
/// since 2.58, and remembers the latest launches. Main thread only.
class LaunchSignals {
  public:
    /// `sessionBus` may be null: then no launch is ever known.
    explicit LaunchSignals(GDBusConnection *sessionBus);
    ~LaunchSignals();
    LaunchSignals(const LaunchSignals &) = delete;
    LaunchSignals &operator=(const LaunchSignals &) = delete;

    /// Whether signals can come at all.
    [[nodiscard]] bool canCome() const { return bus != nullptr; }

    /// How this process was launched; nothing when no signal came, or when many others came since.
    [[nodiscard]] std::optional<ApplicationLaunch> launchOf(pid_t child) const;

    /// For a process that was launched just now, whose launcher may not have sent the signal yet: calls
    /// `ended` once from the main loop, when the signal has come or a second has passed.
    void await(pid_t child, std::function<void()> ended);

  private:
    struct Wait {
        Wait(pid_t process, std::function<void()> whenEnded) : child(process), ended(std::move(whenEnded)) {}

        pid_t child;
        std::function<void()> ended;
        Timer timer;
    };

    void endWaits(const std::function<bool(const Wait &)> &which);
    static void received(GDBusConnection *bus, const gchar *sender, const gchar *path, const gchar *interface,
                         const gchar *signal, GVariant *parameters, gpointer self);

    GObjectPointer<GDBusConnection> bus;
    std::deque<ApplicationLaunch> latest; ///< the newest first
    std::list<Wait> waits;
    guint subscription = 0;
};

} // namespace fernhop::freedesktop
