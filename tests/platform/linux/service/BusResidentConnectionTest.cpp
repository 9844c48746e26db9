#include "platform/linux/service/BusResidentConnection.h"

#include "BusClient.h"
#include "platform/linux/base/FernhopService.h"
#include "platform/linux/service/LinkService.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace std::chrono_literals;
using Sentences = std::vector<std::string>;

/// A bus on which Fernhop has its name and, unless it hangs, answers in another process.
class BusResidentConnectionTest : public testing::Test {
  protected:
    /// Takes the name, and drops every call.
    void hang() {
        EXPECT_EQ(requestName(resident.get(), serviceName), NameRequest::owned);
        g_dbus_connection_add_filter(
            resident.get(),
            [](auto *, GDBusMessage *message, gboolean incoming, gpointer) -> GDBusMessage * {
                if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
                    return message;
                g_object_unref(message);
                return nullptr;
            },
            nullptr, nullptr);
    }
    std::optional<CommandResult> perform(AnswerPatience patience) {
        BusResidentConnection connection(
            connectTo(bus.address()), "fernhop-open", "",
            [this](const auto &sentence) { told.push_back(sentence); }, patience);
        return connection.perform({"status"}, "");
    }

    support::TemporaryHome home;
    support::PrivateBus bus{home};
    BusConnection resident = connectTo(bus.address());
    Sentences told;
};

TEST_F(BusResidentConnectionTest, FindsThatNoneIsRunning) {
    EXPECT_FALSE(perform({}).has_value());
    EXPECT_EQ(told, Sentences{});
}

TEST_F(BusResidentConnectionTest, GivesUpOnOneThatDoesNotAnswer) {
    hang();
    const auto result = perform({1ms, 50ms});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->status, exitStatus::failure);
    EXPECT_EQ(result->errors,
              "fernhop: Fernhop does not answer. It may still carry out the command later.\n");
    EXPECT_EQ(told, Sentences{"Fernhop is not answering yet."});
}

} // namespace
} // namespace fernhop::freedesktop
