#pragma once

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

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

    [[nodiscard]] sd_bus *connection() const { return bus.get(); }

  private:
    struct Close {
        void operator()(sd_bus *open) const { sd_bus_close_unref(open); }
    };

    std::unique_ptr<sd_bus, Close> bus;
};

} // namespace fernhop::desktoptest
