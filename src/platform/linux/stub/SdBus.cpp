#include "platform/linux/stub/SdBus.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace fernhop::stub {
namespace {

using Clock = std::chrono::steady_clock;

// A bus answers within milliseconds. This long on a machine that is very busy, no longer for one that hangs.
constexpr std::chrono::seconds longestGreeting{3};

/// Whether there is a place to look for a bus. A relative folder would lead to whatever is below the working
/// directory.
bool isBusNamed() {
    const char *address = secure_getenv("DBUS_SESSION_BUS_ADDRESS");
    const char *folder = secure_getenv("XDG_RUNTIME_DIR");
    return address != nullptr || (folder != nullptr && *folder == '/');
}

} // namespace

BusPointer connectToSessionBus() {
    sd_bus *opened = nullptr;
    if (!isBusNamed() || sd_bus_open_user(&opened) < 0)
        return nullptr;
    BusPointer bus(opened);
    const auto deadline = Clock::now() + longestGreeting;
    while (sd_bus_is_ready(opened) == 0) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0 || !processFor(opened, left))
            return nullptr;
    }
    return sd_bus_is_ready(opened) > 0 ? std::move(bus) : nullptr;
}

bool processFor(sd_bus *bus, std::chrono::milliseconds atMost) {
    const int processed = sd_bus_process(bus, nullptr);
    if (processed != 0)
        return processed > 0;
    const int waited =
        sd_bus_wait(bus, static_cast<std::uint64_t>(std::chrono::microseconds(atMost).count()));
    return waited >= 0 || waited == -EINTR;
}

MessagePointer callWithoutStart(sd_bus *bus, const char *service, const char *path, const char *interface,
                                const char *method) {
    sd_bus_message *created = nullptr;
    if (sd_bus_message_new_method_call(bus, &created, service, path, interface, method) < 0)
        return nullptr;
    sd_bus_message_set_auto_start(created, 0);
    return MessagePointer(created);
}

} // namespace fernhop::stub
