#include "platform/linux/stub/SessionEnvironment.h"

#include "platform/linux/stub/SdBus.h"

#include <array>
#include <chrono>
#include <optional>
#include <vector>

namespace fernhop::stub {
namespace {

using freedesktop::Environment;

constexpr std::chrono::microseconds longestAnswer = std::chrono::seconds(2);

// What tells a program which session it is in. Not every desktop tells the user manager.
constexpr std::array sessionVariables = {
    "DISPLAY",         "XAUTHORITY",          "WAYLAND_DISPLAY",     "SWAYSOCK",
    "XDG_RUNTIME_DIR", "XDG_CURRENT_DESKTOP", "XDG_SESSION_DESKTOP", "XDG_SESSION_TYPE",
    "XDG_SESSION_ID",  "DESKTOP_SESSION",     "KDE_FULL_SESSION",    "KDE_SESSION_VERSION"};

std::optional<Environment> environmentInReply(sd_bus_message *reply) {
    if (sd_bus_message_enter_container(reply, 'v', "as") < 0 ||
        sd_bus_message_enter_container(reply, 'a', "s") < 0)
        return std::nullopt;
    std::vector<std::string> assignments;
    const char *assignment = nullptr;
    while (sd_bus_message_read_basic(reply, 's', &assignment) > 0)
        assignments.emplace_back(assignment);
    return Environment(assignments);
}

/// Nothing where no user manager is on this bus or it does not answer.
std::optional<Environment> environmentOfManager(sd_bus *bus) {
    const auto call = callWithoutStart(bus, "org.freedesktop.systemd1", "/org/freedesktop/systemd1",
                                       "org.freedesktop.DBus.Properties", "Get");
    if (!call ||
        sd_bus_message_append(call.get(), "ss", "org.freedesktop.systemd1.Manager", "Environment") < 0)
        return std::nullopt;
    sd_bus_message *reply = nullptr;
    if (sd_bus_call(bus, call.get(), static_cast<std::uint64_t>(longestAnswer.count()), nullptr, &reply) < 0)
        return std::nullopt;
    return environmentInReply(MessagePointer(reply).get());
}

} // namespace

Environment sessionEnvironment(sd_bus *bus, const Environment &own) {
    auto environment = environmentOfManager(bus);
    if (!environment) {
        environment = own;
        // Libraries for the program that started this one, not for every browser of the session.
        environment->unsetPrefixed("LD_");
    }
    environment->unsetLaunchVariables();
    for (const char *name : sessionVariables)
        if (const auto value = own.value(name); value && !environment->value(name))
            environment->set(name, *value);
    // Whatever the manager's bus is: the resident has to be found on this one.
    if (const auto address = own.value("DBUS_SESSION_BUS_ADDRESS"))
        environment->set("DBUS_SESSION_BUS_ADDRESS", *address);
    return *environment;
}

} // namespace fernhop::stub
