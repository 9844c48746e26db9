#pragma once

#include "platform/linux/base/GPointer.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// One interface of one object on the bus, there from construction to destruction. Main thread only.
class BusObject {
  public:
    /// What the object does. GDBus lets only declared calls through, with bodies of the declared types.
    struct Behaviour {
        /// Answers a call; the invocation is to be completed, which gives it up.
        std::function<void(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation)> call;
        /// The value of a property, floating; null: it cannot be told. Empty where none is declared.
        std::function<GVariant *(std::string_view property)> property;
    };

    /// `introspection` is an XML document whose first interface this is. `bus` outlives the object.
    /// Construction with an interface that the connection has at this path already makes an object that is
    /// not there.
    BusObject(GDBusConnection *bus, const char *path, const char *introspection, Behaviour behaviour);
    ~BusObject();
    BusObject(const BusObject &) = delete;
    BusObject &operator=(const BusObject &) = delete;

    /// Whether the bus knows the object.
    [[nodiscard]] bool isThere() const { return registration != 0; }

    /// Sends a signal of the interface to all who listen. `body` is taken, null for none.
    void emit(const char *signal, GVariant *body = nullptr) const;

  private:
    static void methodCalled(GDBusConnection *bus, const gchar *sender, const gchar *path,
                             const gchar *interface, const gchar *method, GVariant *body,
                             GDBusMethodInvocation *invocation, gpointer self);
    static GVariant *propertyRead(GDBusConnection *bus, const gchar *sender, const gchar *path,
                                  const gchar *interface, const gchar *property, GError **error,
                                  gpointer self);

    GDBusConnection *bus;
    std::string objectPath;
    std::string interfaceName;
    Behaviour behaviour;
    guint registration = 0;
};

/// The texts of a list of strings within a call, by its place among the arguments.
[[nodiscard]] std::vector<std::string> textsIn(GVariant *body, gsize place);

/// Answers a call with an error of the bus that says so.
void refuse(GDBusMethodInvocation *invocation, const char *reason);

} // namespace fernhop::freedesktop
