#include "platform/linux/service/SessionApplication.h"

#include "BusClient.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>
#include <signal.h>

namespace fernhop::freedesktop {
namespace {

class SessionApplicationTest : public testing::Test {
  protected:
    SessionApplicationTest() {
        application.setShouldTerminate([this] {
            ++asked;
            return answer;
        });
    }

    int asked = 0;
    TerminateReply answer = TerminateReply::now;
    SessionApplication application;
};

TEST_F(SessionApplicationTest, AsksTheControllerOnceWhoeverEndsIt) {
    application.endWithSignals();
    raise(SIGTERM);
    raise(SIGINT);
    application.run();
    application.terminate();
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    EXPECT_EQ(asked, 1);
}

TEST_F(SessionApplicationTest, EndsByEachOfTheSignals) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        SessionApplication fresh;
        int ends = 0;
        fresh.setShouldTerminate([&] {
            ++ends;
            return TerminateReply::now;
        });
        fresh.endWithSignals();
        raise(number);
        fresh.run();
        EXPECT_EQ(ends, 1) << number;
    }
}

TEST_F(SessionApplicationTest, EndedBeforeItRunsItDoesNotRun) {
    application.terminate();
    application.run();
    EXPECT_EQ(asked, 1);
}

TEST_F(SessionApplicationTest, AControllerThatRefusesIsAskedAgain) {
    answer = TerminateReply::cancel;
    application.terminate();
    answer = TerminateReply::now;
    application.terminate();
    application.run();
    EXPECT_EQ(asked, 2);
}

TEST_F(SessionApplicationTest, EndingWithinTheQuestionAsksNoSecondTime) {
    application.setShouldTerminate([this] {
        ++asked;
        application.terminate();
        return TerminateReply::now;
    });
    application.terminate();
    EXPECT_EQ(asked, 1);
}

TEST_F(SessionApplicationTest, EndsWhenTheSessionTakesItsBusAway) {
    const support::TemporaryHome home;
    support::PrivateBus bus(home);
    const auto connection = connectTo(bus.address());
    g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
    SessionApplication fresh;
    int ends = 0;
    fresh.setShouldTerminate([&] {
        ++ends;
        return TerminateReply::now;
    });
    fresh.endWithBus(connection.get());
    bus.stop();
    fresh.run();
    EXPECT_EQ(ends, 1);
}

} // namespace
} // namespace fernhop::freedesktop
