#pragma once

#include "platform/linux/base/Result.h"
#include "platform/linux/source/LinkDelivery.h"

#include <gio/gio.h>
#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

/// What a launch asks of other programs on the session bus. Main thread only.
namespace fernhop::freedesktop {

/// Whether an application could be asked over the bus to open links.
enum class BusOpening {
    opened,
    unavailable, ///< the application cannot be reached this way; certainly nothing was opened
};

/// Opens URLs in an application that is activated over the bus (org.freedesktop.Application.Open), with the
/// tokens as platform data. `ended` is called once, by the main loop and never from within this call; with a
/// failure when the application, or starting it, failed.
void openThroughBus(GDBusConnection *bus, const std::string &desktopID, const std::vector<std::string> &urls,
                    const LaunchTokens &tokens, std::function<void(const Result<BusOpening> &)> ended);

/// Asks the user's systemd to put a process into a unit of its own, so that a browser is not ended or limited
/// together with what started it. Without systemd nothing happens; the outcome is not waited for.
void moveToLaunchScope(GDBusConnection *bus, pid_t process, const std::string &desktopID);

} // namespace fernhop::freedesktop
