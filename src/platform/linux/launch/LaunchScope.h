#pragma once

#include <gio/gio.h>
#include <sys/types.h>

#include <string>

namespace fernhop::freedesktop {

/// The systemd unit of a launched application: "app-fernhop-<application>-<random>.scope", the form that
/// desktops use, the application's identifier escaped as systemd.unit(5) says.
[[nodiscard]] std::string launchScopeName(const std::string &desktopID, const std::string &random);

/// Asks the user's systemd to put a process into a unit of its own, so that a browser does not end or is
/// limited together with what started it. Without systemd nothing happens; the outcome is not waited for.
void moveToLaunchScope(GDBusConnection *bus, pid_t process, const std::string &desktopID);

} // namespace fernhop::freedesktop
