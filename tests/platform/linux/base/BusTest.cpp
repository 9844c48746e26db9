#include "platform/linux/base/Bus.h"

#include "support/PrivateBus.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace fernhop::freedesktop {
namespace {

TEST(SessionBus, IsFoundByItsAddressOrInTheRuntimeFolder) {
    const support::TemporaryHome home;
    const Environment runtimeOnly({"XDG_RUNTIME_DIR=" + home.runtime()});
    EXPECT_FALSE(hasSessionBus(Environment()));
    EXPECT_FALSE(hasSessionBus(runtimeOnly));
    EXPECT_FALSE(hasSessionBus(Environment({"DBUS_SESSION_BUS_ADDRESS="})));
    EXPECT_TRUE(hasSessionBus(Environment({"DBUS_SESSION_BUS_ADDRESS=unix:path=/somewhere"})));
    home.write(home.runtime() + "/bus", "a file is no bus");
    EXPECT_FALSE(hasSessionBus(runtimeOnly));
    ::unlink((home.runtime() + "/bus").c_str());
    const support::PrivateBus bus(home);
    EXPECT_TRUE(hasSessionBus(runtimeOnly));
}

TEST(SessionBus, NoneIsEverStarted) {
    const auto bus = connectToSessionBus(Environment({"DISPLAY=:0"}));
    ASSERT_FALSE(bus);
    EXPECT_EQ(bus.failure().reason, "this session has no message bus (DBUS_SESSION_BUS_ADDRESS is not set)");
}

} // namespace
} // namespace fernhop::freedesktop
