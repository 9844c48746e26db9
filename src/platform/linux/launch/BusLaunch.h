#pragma once

#include "platform/linux/base/Result.h"
#include "platform/linux/source/LinkDelivery.h"

#include <gio/gio.h>
#include <sys/types.h>

#include <chrono>
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

/// More than the bus allows for the start of an application, which is two minutes. One that has not answered
/// by then has stopped, and the user is to know.
inline constexpr std::chrono::milliseconds busApplicationPatience{150'000};

/// Opens URLs in an application that is activated over the bus (org.freedesktop.Application.Open), with the
/// tokens as platform data. `ended` is called once, by the main loop and never from within this call; with a
/// failure when the application, or starting it, failed, or did not answer in time. It may open the URLs
/// later then.
void openThroughBus(GDBusConnection *bus, const std::string &desktopID, const std::vector<std::string> &urls,
                    const LaunchTokens &tokens, std::function<void(const Result<BusOpening> &)> ended,
                    std::chrono::milliseconds longestWait = busApplicationPatience);

/// Asks the user's systemd to put a process into a unit of its own, so that a browser is not ended or limited
/// together with what started it. Without systemd nothing happens; the outcome is not waited for.
void moveToLaunchScope(GDBusConnection *bus, pid_t process, const std::string &desktopID);

} // namespace fernhop::freedesktop
