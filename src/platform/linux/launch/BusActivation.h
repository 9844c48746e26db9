#pragma once

#include "platform/linux/launch/LaunchEnvironment.h"

#include <gio/gio.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// How opening through the bus ended.
struct BusActivationResult {
    enum class Kind {
        opened,
        unavailable, ///< the application cannot be reached this way; certainly nothing was opened
        failed,      ///< the application, or starting it, failed
    };
    Kind kind;
    std::string description; ///< of the failure, in the user's language
};

/// The object path of an application on the bus, by its name there ("org.example.Web-2" is
/// "/org/example/Web_2"; Desktop Entry Specification, "D-Bus Activation").
[[nodiscard]] std::string applicationObjectPath(const std::string &busName);

/// Opens URLs in an application that is activated over the bus (org.freedesktop.Application.Open), with the
/// tokens as platform data. `ended` is called once, by the main loop, never from within this call.
void openThroughBus(GDBusConnection *bus, const std::string &desktopID, const std::vector<std::string> &urls,
                    const LaunchTokens &tokens, std::function<void(const BusActivationResult &)> ended);

} // namespace fernhop::freedesktop
