#pragma once

#include "platform/linux/base/GPointer.h"

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// Somebody launched an application through GIO.
struct ApplicationLaunch {
    pid_t child = 0;               ///< the process that was started
    std::optional<pid_t> origin;   ///< the process that started it
    std::string originProgram;     ///< the name that process goes by; may be empty
    std::string originDesktopFile; ///< path of the desktop entry that it, or an ancestor, came from

    bool operator==(const ApplicationLaunch &) const = default;
};

/// Reads the parameters of the signal `Launched` of `org.gtk.gio.DesktopAppInfo`, as GLib broadcasts it since
/// 2.58: (desktop file, display name, child's pid, URIs, more). Anyone may send it, so anything may be in it;
/// nothing when there is no child.
[[nodiscard]] std::optional<ApplicationLaunch> launchOfSignal(GVariant *parameters);

/// Listens to the session bus for launches and remembers the latest. Main thread only.
class LaunchSignals {
  public:
    /// `sessionBus` may be null: then nothing is ever heard.
    explicit LaunchSignals(GDBusConnection *sessionBus);
    ~LaunchSignals();
    LaunchSignals(const LaunchSignals &) = delete;
    LaunchSignals &operator=(const LaunchSignals &) = delete;

    /// How this process was launched; nothing when nobody told, or long ago.
    [[nodiscard]] std::optional<ApplicationLaunch> launchOf(pid_t child) const;

    /// The same of a process that has only just been launched: its launcher may not have told yet, so this
    /// waits for a moment, a second at most.
    [[nodiscard]] std::optional<ApplicationLaunch> awaitLaunchOf(pid_t child) const;

  private:
    class Memory;

    GObjectPointer<GDBusConnection> bus;
    std::shared_ptr<Memory> memory;
    guint subscription = 0;
    guint filter = 0;
};

} // namespace fernhop::freedesktop
