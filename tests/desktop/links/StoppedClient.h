#pragma once

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <cstdint>
#include <memory>
#include <string>

namespace fernhop::desktoptest {

/// A program on the bus that has been stopped: it has its name, and never reads what is sent to it.
class StoppedClient {
  public:
    /// `name` is a name of the bus to take; empty: none.
    StoppedClient(const std::string &address, const std::string &name) {
        sd_bus *made = nullptr;
        EXPECT_GE(sd_bus_new(&made), 0);
        bus.reset(made);
        EXPECT_GE(sd_bus_set_address(made, address.c_str()), 0);
        EXPECT_GE(sd_bus_set_bus_client(made, 1), 0);
        EXPECT_GE(sd_bus_start(made), 0);
        if (!name.empty()) {
            EXPECT_GE(sd_bus_request_name(made, name.c_str(), 0), 0) << name;
        }
    }

    /// Sends calls to Fernhop, whose answers it will not read. `types` are those of the arguments, as sd-bus
    /// writes them.
    template <typename... Arguments>
    void flood(int calls, const char *path, const char *interface, const char *method, const char *types,
               Arguments... arguments) const {
        for (int call = 0; call < calls; ++call) {
            sd_bus_message *message = nullptr;
            ASSERT_GE(sd_bus_message_new_method_call(bus.get(), &message, "org.fernhop.Fernhop", path,
                                                     interface, method),
                      0);
            ASSERT_GE(sd_bus_message_append(message, types, arguments...), 0);
            std::uint64_t cookie = 0; // who asks for it is sent an answer
            ASSERT_GE(sd_bus_send(bus.get(), message, &cookie), 0);
            sd_bus_message_unref(message);
        }
        ASSERT_GE(sd_bus_flush(bus.get()), 0);
    }

    /// Goes on, until Fernhop has handled every call.
    void waitUntilHandled() const {
        int result = 0;
        do
            result = sd_bus_call_method(bus.get(), "org.fernhop.Fernhop", "/MenuBar",
                                        "org.freedesktop.DBus.Properties", "Get", nullptr, nullptr, "ss",
                                        "com.canonical.dbusmenu", "Version");
        while (result == -ENOBUFS);
        EXPECT_GE(result, 0);
    }

  private:
    struct Close {
        void operator()(sd_bus *open) const { sd_bus_close_unref(open); }
    };

    std::unique_ptr<sd_bus, Close> bus;
};

} // namespace fernhop::desktoptest
