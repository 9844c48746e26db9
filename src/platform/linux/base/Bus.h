#pragma once

#include "platform/linux/base/Environment.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/Result.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// Whether the session with this environment has a bus to be found: by DBUS_SESSION_BUS_ADDRESS, or as the
/// user's bus in XDG_RUNTIME_DIR. A bus is never started, as nobody else in the session would know it.
[[nodiscard]] bool hasSessionBus(const Environment &environment);

/// The session bus, or why it cannot be reached; waits for it some seconds at most. The process outlives the
/// connection: it is told of the bus's end, not ended by it.
Result<GObjectPointer<GDBusConnection>> connectToSessionBus(const Environment &environment);

/// One interface of an object of ours on the bus, from construction to destruction. Main thread only.
class BusObject {
  public:
    /// What the object does. GDBus lets only declared calls through, with bodies of the declared types.
    struct Behaviour {
        /// Answers a call; the invocation is to be completed, which gives it up.
        std::function<void(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation)> call;
        /// The value of a property, floating; null: it cannot be told. Empty where none is declared.
        std::function<GVariant *(std::string_view property)> property;
    };

    /// `bus` and `interface` outlive the object.
    /// Where the connection has this interface at this path already, the new object is not registered.
    BusObject(GDBusConnection *bus, const char *path, const GDBusInterfaceInfo &interface,
              Behaviour behaviour);
    ~BusObject();
    BusObject(const BusObject &) = delete;
    BusObject &operator=(const BusObject &) = delete;

    /// Whether the bus knows the object.
    [[nodiscard]] bool isRegistered() const { return registration != 0; }

    /// Sends a signal of the interface to all who listen. `body` is taken, null for none.
    void emit(const char *signal, GVariant *body = nullptr) const;

  private:
    GDBusConnection *bus;
    std::string objectPath;
    const GDBusInterfaceInfo &interface;
    Behaviour behaviour;
    guint registration = 0;
};

/// The texts of a list of strings within a call, by its place among the arguments.
[[nodiscard]] std::vector<std::string> textsIn(GVariant *body, gsize place);

/// Answers a call with an error of the bus that says so.
void refuse(GDBusMethodInvocation *invocation, const char *reason);

} // namespace fernhop::freedesktop
