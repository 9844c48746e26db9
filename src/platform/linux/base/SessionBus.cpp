#include "platform/linux/base/SessionBus.h"

#include <sys/stat.h>

namespace fernhop::freedesktop {

bool hasSessionBus(const Environment &environment) {
    if (const auto address = environment.value("DBUS_SESSION_BUS_ADDRESS"))
        return !address->empty();
    const auto folder = environment.value("XDG_RUNTIME_DIR").value_or("");
    struct stat status = {};
    return !folder.empty() && stat((folder + "/bus").c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

Result<GObjectPointer<GDBusConnection>> connectToSessionBus(const Environment &environment) {
    if (!hasSessionBus(environment))
        return Failure{"this session has no message bus (DBUS_SESSION_BUS_ADDRESS is not set)"};
    GError *error = nullptr;
    GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error));
    if (!bus) {
        const GErrorPointer failure(error);
        return Failure{std::string("the session's message bus cannot be reached: ") + failure->message};
    }
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

} // namespace fernhop::freedesktop
