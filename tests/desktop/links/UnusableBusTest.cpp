#include "BrokenBus.h"
#include "BusSender.h"
#include "LinkSession.h"

#include <gtest/gtest.h>
#include <signal.h>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

/// A bus that cannot be used: the links open all the same.
class UnusableBus : public testing::Test {
  protected:
    ~UnusableBus() override {
        if (session.bus)
            session.killResident(SIGKILL);
    }
    void expectOpens() {
        EXPECT_EQ(session.open({"https://1/", "https://2/"}), 0) << session.output();
        EXPECT_EQ(session.opened(2), (Links{"https://1/", "https://2/"}));
    }

    LinkSession session;
};

struct BusAnswer {
    const char *name;
    std::optional<std::string> text;
};

class BrokenBuses : public UnusableBus, public testing::WithParamInterface<BusAnswer> {};

TEST_P(BrokenBuses, DoNotKeepLinksFromOpening) {
    const BrokenBus bus(session.home.runtime() + "/broken", GetParam().text);
    ASSERT_TRUE(bus.isListening);
    session.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    expectOpens();
}

INSTANTIATE_TEST_SUITE_P(Answers, BrokenBuses,
                         testing::Values(BusAnswer{"ClosesAtOnce", ""}, BusAnswer{"IsSilent", std::nullopt},
                                         BusAnswer{"RefusesTheUser",
                                                   "REJECTED EXTERNAL\r\nERROR\r\nERROR\r\n"}),
                         [](const auto &instance) { return instance.param.name; });

TEST_F(UnusableBus, IsSilentToTheCommandLine) {
    const BrokenBus bus(session.home.runtime() + "/broken", std::nullopt);
    ASSERT_TRUE(bus.isListening);
    session.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    EXPECT_EQ(session.fernhop({"open", "https://1/"}), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://1/"});
}

TEST_F(UnusableBus, HasNoConnectionLeft) {
    session.bus = std::make_unique<support::PrivateBus>(session.home, session.environment,
                                                        "<limit name=\"max_connections_per_user\">1</limit>");
    session.environment["DBUS_SESSION_BUS_ADDRESS"] = session.bus->address();
    const BusSender holder(session.bus->address());
    expectOpens();
    session.bus.reset();
}

TEST_F(UnusableBus, RefusesTheCall) {
    session.bus = std::make_unique<support::PrivateBus>(
        session.home, session.environment,
        "<policy context=\"mandatory\"><deny send_interface=\"org.fernhop.Fernhop\"/></policy>");
    session.environment["DBUS_SESSION_BUS_ADDRESS"] = session.bus->address();
    session.startFernhop();
    expectOpens();
}

TEST_F(UnusableBus, IsBelowARelativeFolder) {
    const BrokenBus bus(session.home.root() + "/bus", std::nullopt);
    ASSERT_TRUE(bus.isListening);
    session.environment["XDG_RUNTIME_DIR"] = ".";
    EXPECT_EQ(session.run({"env", "--chdir=" + session.home.root(), session.program("fernhop-open"),
                           "https://1/", "https://2/"}),
              0);
    EXPECT_EQ(session.opened(2), (Links{"https://1/", "https://2/"}));
}

/// Few descriptors are free in the process that opens the link.
class FewDescriptors : public UnusableBus {
  protected:
    FewDescriptors() { session.startBus(); }
    int openWith(const std::string &limit) {
        // Nothing that this test has inherited itself.
        return session.run({"bash", "-c",
                            "for n in {3..99}; do eval \"exec $n>&-\"; done; exec \"$0\" \"$@\"", "prlimit",
                            "--nofile=" + limit, session.program("fernhop-open"), "https://1/"});
    }
    /// All but one, with which a program starts at least, are taken by files that the sender leaves open.
    int openWithLeaks() {
        return session.run({"prlimit", "--nofile=32:32", "bash", "-c",
                            "for n in {3..30}; do eval \"exec $n</dev/null\"; done; exec \"$0\" \"$@\"",
                            session.program("fernhop-open"), "https://1/"});
    }
};

TEST_F(FewDescriptors, SufficeForTheRunningFernhop) {
    session.startFernhop();
    EXPECT_EQ(openWith("4:4"), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://1/"});
}

TEST_F(FewDescriptors, SufficeToStartFernhop) {
    EXPECT_EQ(openWith("4:1024"), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://1/"});
    EXPECT_GT(session.residentPid(), 0);
}

TEST_F(FewDescriptors, MayBeLeftByASenderThatKeepsItsFilesOpen) {
    session.environment["DBUS_SESSION_BUS_ADDRESS"] = "";
    EXPECT_EQ(openWithLeaks(), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://1/"});
}

TEST_F(FewDescriptors, AreAFailureThatIsTold) {
    if (FERNHOP_SANITIZED)
        GTEST_SKIP() << "the sanitizers need descriptors of their own";
    session.environment["DBUS_SESSION_BUS_ADDRESS"] = "";
    EXPECT_EQ(openWith("4:4"), 1);
    EXPECT_NE(session.output().find("\"https://1/\" was not opened"), std::string::npos) << session.output();
}

} // namespace
} // namespace fernhop::desktoptest
