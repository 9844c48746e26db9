#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstring>
#include <memory>
#include <string>

/// The session bus through libsystemd. One thread.
namespace fernhop::stub {

struct SdBusDelete {
    // Without flushing, which would wait for a bus that never answers; every call here waits for its reply.
    void operator()(sd_bus *bus) const { sd_bus_close_unref(bus); }
    void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
};
using BusPointer = std::unique_ptr<sd_bus, SdBusDelete>;
using MessagePointer = std::unique_ptr<sd_bus_message, SdBusDelete>;

/// The error that a call was answered with.
class BusError {
  public:
    BusError() = default;
    ~BusError() { sd_bus_error_free(&error); }
    BusError(const BusError &) = delete;
    BusError &operator=(const BusError &) = delete;

    [[nodiscard]] sd_bus_error *out() { return &error; }
    [[nodiscard]] bool is(const char *errorName) const {
        return sd_bus_error_has_name(&error, errorName) != 0;
    }
    [[nodiscard]] bool beginsWith(const char *prefix) const {
        return error.name != nullptr && strncmp(error.name, prefix, strlen(prefix)) == 0;
    }
    /// For people; `result` is what the call returned.
    [[nodiscard]] std::string text(int result) const {
        return error.message != nullptr ? error.message : strerror(-result);
    }

  private:
    sd_bus_error error{}; // what SD_BUS_ERROR_NULL is, which is no C++
};

/// The session bus, when it has let this process in; null where there is none, or it refuses, or does not
/// answer within some seconds. By then nothing has been handed to anybody.
[[nodiscard]] BusPointer connectToSessionBus();

/// Handles what the bus has sent, or waits for it at most so long. False when the connection is closed.
[[nodiscard]] bool processFor(sd_bus *bus, std::chrono::milliseconds atMost);

/// A call that does not start the service that it goes to; null when there is no memory.
[[nodiscard]] MessagePointer callWithoutStart(sd_bus *bus, const char *service, const char *path,
                                              const char *interface, const char *method);

} // namespace fernhop::stub
