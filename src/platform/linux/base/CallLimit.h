#pragma once

#include "platform/linux/base/GPointer.h"

#include <functional>
#include <memory>
#include <string_view>

namespace fernhop::freedesktop {

/// Limits the calls that one program on the bus has in progress here: what it calls beyond that is refused
/// (org.freedesktop.DBus.Error.LimitsExceeded). GLib takes calls from the bus faster than they are answered
/// and keeps them, so that a program that floods would hold up the calls of others, and fill the memory.
class CallLimit {
  public:
    /// `mayRefuse` says by its name whether a method may be refused; it is called on GLib's own thread.
    CallLimit(GDBusConnection *bus, std::size_t mostCalls,
              std::function<bool(std::string_view method)> mayRefuse);
    ~CallLimit();
    CallLimit(const CallLimit &) = delete;
    CallLimit &operator=(const CallLimit &) = delete;

  private:
    class MemoryReturn;
    class Calls;

    GObjectPointer<GDBusConnection> bus;
    guint filter;
};

} // namespace fernhop::freedesktop
