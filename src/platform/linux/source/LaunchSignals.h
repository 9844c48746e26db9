#pragma once

#include "platform/linux/base/GPointer.h"

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>

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

    /// How this process was launched; nothing when no signal came, or when many others came since.
    [[nodiscard]] std::optional<ApplicationLaunch> launchOf(pid_t child) const;

    /// The same for a process that was launched just now. Its launcher may not have sent the signal yet, so
    /// this waits for a moment, a second at most.
    [[nodiscard]] std::optional<ApplicationLaunch> awaitLaunchOf(pid_t child) const;

  private:
    class Memory;

    GObjectPointer<GDBusConnection> bus;
    std::shared_ptr<Memory> memory;
    guint subscription = 0;
    guint filter = 0;
};

} // namespace fernhop::freedesktop
