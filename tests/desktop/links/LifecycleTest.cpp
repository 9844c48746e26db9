#include "BusSender.h"
#include "LinkSession.h"
#include "SilentBrowser.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <utility>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

class Lifecycle : public testing::Test {
  protected:
    ~Lifecycle() override {
        if (session.bus)
            session.killResident(SIGKILL);
    }

    std::string defaults() const {
        std::ifstream stream(session.home.config() + "/mimeapps.list");
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void restoreOnQuit() {
        session.startBus();
        session.startFernhop();
        ASSERT_TRUE(session.routeAndRestoreOnQuit()) << session.output();
        ASSERT_NE(defaults().find("https=org.fernhop.Fernhop.desktop"), std::string::npos) << defaults();
    }
    void expectEndWithRestore() {
        EXPECT_EQ(session.resident->wait(), 0);
        EXPECT_NE(defaults().find("x-scheme-handler/http=web.desktop"), std::string::npos) << defaults();
        EXPECT_NE(defaults().find("x-scheme-handler/https=web.desktop"), std::string::npos) << defaults();
    }

    LinkSession session;
};

TEST_F(Lifecycle, ThousandLinksSentWhileItStartsAreEachOpenedOnceInOrder) {
    session.makeActivatable();
    session.startBus();
    BusSender sender(session.bus->address());
    Links expected;
    for (int number = 0; number < 1000; ++number) {
        expected.push_back("https://a/" + std::to_string(number));
        sender.open({expected.back()});
    }
    // However slow the machine is, as long as more links are opened.
    for (int before = -1; sender.answered > std::exchange(before, sender.answered);)
        (void)support::runUntil([&] { return sender.answered == 1000; });
    EXPECT_EQ(sender.answered, 1000);
    EXPECT_EQ(session.opened(1000), expected);
}

TEST_F(Lifecycle, TheStubLetsTheBusStartIt) {
    session.makeActivatable();
    session.startBus();
    EXPECT_EQ(session.open({"https://1/", "https://2/"}), 0) << session.output();
    EXPECT_EQ(session.opened(2), (Links{"https://1/", "https://2/"}));
}

TEST_F(Lifecycle, TheStubStartsItWhereTheBusDoesNotKnowIt) {
    session.startBus();
    EXPECT_EQ(session.open({"https://1/"}), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://1/"});
    EXPECT_GT(session.residentPid(), 0);
}

TEST_F(Lifecycle, StubsAtTheSameTimeStartOne) {
    session.startBus();
    std::vector<std::unique_ptr<support::ChildProcess>> stubs;
    for (int number = 0; number < 8; ++number)
        stubs.push_back(
            session.start({session.program("fernhop-open"), "https://" + std::to_string(number)}));
    for (auto &stub : stubs)
        EXPECT_EQ(stub->wait(), 0);
    EXPECT_EQ(session.opened(8).size(), 8U);
}

TEST_F(Lifecycle, WithoutALinkTheStubOnlyStartsIt) {
    session.startBus();
    EXPECT_EQ(session.open({}), 0) << session.output();
    EXPECT_GT(session.residentPid(), 0);
}

TEST_F(Lifecycle, ASecondStartEndsQuietly) {
    session.startBus();
    session.startFernhop();
    EXPECT_EQ(session.fernhop({}), 0);
    EXPECT_EQ(session.output(), "");
    EXPECT_TRUE(session.resident->isRunning());
}

TEST_F(Lifecycle, WithoutABusItSaysSoAndTheStubOpensTheLinkItself) {
    EXPECT_EQ(session.fernhop({}), 1);
    EXPECT_EQ(session.output(),
              "fernhop: this session has no message bus (DBUS_SESSION_BUS_ADDRESS is not set)\n");
    EXPECT_EQ(session.open({"https://1/%F0", "-x", "https://2/"}, {{"XDG_ACTIVATION_TOKEN", "token"}}), 0);
    EXPECT_EQ(session.opened(2), (Links{"https://1/%F0", "https://2/"}));
    EXPECT_EQ(session.browser.starts()[0].environment.at("XDG_ACTIVATION_TOKEN"), "token");
}

TEST_F(Lifecycle, WithoutABusTheCommandOpensLinksItself) {
    EXPECT_EQ(session.fernhop({"open", "https://1/%F0", "https://2/"}), 0) << session.output();
    EXPECT_EQ(session.opened(2), (Links{"https://1/%F0", "https://2/"}));
}

TEST_F(Lifecycle, ABusThatIsGoneIsNoBus) {
    session.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + session.home.runtime() + "/nobody";
    EXPECT_EQ(session.fernhop({}), 1);
    EXPECT_NE(session.output().find("message bus cannot be reached"), std::string::npos) << session.output();
    EXPECT_EQ(session.open({"https://1/"}), 0);
    EXPECT_EQ(session.opened(1), Links{"https://1/"});
}

TEST_F(Lifecycle, OptionsStandAlone) {
    EXPECT_EQ(session.open({"--version"}), 0);
    EXPECT_TRUE(session.output().starts_with("fernhop-open "));
    EXPECT_EQ(session.open({"--help"}), 0);
    EXPECT_TRUE(session.output().starts_with("Usage: fernhop-open"));
    EXPECT_EQ(session.open({"--help", "https://1/"}), 0);
    EXPECT_EQ(session.open({"--", "https://2/"}), 0);
    EXPECT_EQ(session.opened(2), (Links{"https://1/", "https://2/"}));
}

class StubAlone : public Lifecycle {
  protected:
    StubAlone() {
        session.startBus();
        std::ifstream original(session.program("fernhop-open"), std::ios::binary);
        session.home.writeProgram(stub(), {std::istreambuf_iterator<char>(original), {}});
    }
    std::string stub() const { return session.home.root() + "/bin/fernhop-open"; }
};

TEST_F(StubAlone, SaysThatFernhopIsMissing) {
    EXPECT_EQ(session.run({stub(), "https://1/"}), 1);
    EXPECT_EQ(session.output(), "fernhop-open: \"https://1/\" was not opened: " + session.home.root() +
                                    "/bin/fernhop: No such file or directory.\n");
}

TEST_F(StubAlone, SaysThatFernhopDoesNotStart) {
    session.home.writeProgram(session.home.root() + "/bin/fernhop", "#!/bin/sh\nexit 3\n");
    EXPECT_EQ(session.run({stub()}), 1);
    EXPECT_EQ(session.output(),
              "fernhop-open: Fernhop was not started: Fernhop ended before it could take links\n");
}

TEST_F(StubAlone, OpensTheLinkItselfWhereFernhopDoesNotStart) {
    session.home.writeProgram(session.home.root() + "/bin/fernhop",
                              "#!/bin/sh\n[ \"$1\" = --without-bus ] || exit 0\necho \"$@\"\nexit 7\n");
    EXPECT_EQ(session.run({stub(), "https://1/"}), 7);
    EXPECT_EQ(session.output(), "--without-bus -- https://1/\n");
}

TEST_F(Lifecycle, ALinkInAKilledFernhopIsDeliveredAnew) {
    session.makeActivatable();
    session.home.writeDesktopEntry("web",
                                   "[Desktop Entry]\nType=Application\nName=web\nHidden=true\nExec=true\n");
    session.home.writeDesktopEntry("org.example.Silent", SilentBrowser::desktopEntry);
    session.startBus();
    const BusSender connection(session.bus->address());
    SilentBrowser browser(connection.connection());
    const auto stub = session.start({session.program("fernhop-open"), "https://1/"});
    ASSERT_TRUE(support::runUntil([&] { return browser.asked.size() == 1; }));
    session.killResident(SIGKILL);
    ASSERT_TRUE(support::runUntil([&] { return browser.asked.size() == 2; })) << "the link was lost";
    EXPECT_TRUE(stub->isRunning()) << "the link is not with its browser yet";
    browser.answer();
    ASSERT_TRUE(support::runUntil([&] { return !stub->isRunning(); }));
    EXPECT_EQ(stub->wait(), 0);
}

TEST_F(Lifecycle, LinksThatComeWhileItEndsAreNotLost) {
    session.startBus();
    constexpr int times = 10, linksEachTime = 20;
    for (int time = 0; time < times; ++time) {
        session.startFernhop();
        session.resident->signal(SIGTERM);
        std::vector<std::unique_ptr<support::ChildProcess>> stubs;
        for (int i = 0; i < linksEachTime; ++i)
            stubs.push_back(session.start({session.program("fernhop-open"), "https://1/"}));
        for (const auto &stub : stubs)
            ASSERT_EQ(stub->wait(), 0) << session.output();
        session.killResident(SIGTERM);
    }
    // One that is opened while Fernhop ends may be opened again by the next.
    EXPECT_GE(session.opened(times * linksEachTime).size(), std::size_t{times * linksEachTime});
}

TEST_F(Lifecycle, EndsBySignalsWithTheDefaultRoleHandedBack) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        restoreOnQuit();
        session.resident->signal(signal);
        expectEndWithRestore();
    }
}

TEST_F(Lifecycle, EndsByTheCommandWithTheDefaultRoleHandedBack) {
    restoreOnQuit();
    EXPECT_EQ(session.fernhop({"quit"}), 0) << session.output();
    expectEndWithRestore();
}

TEST_F(Lifecycle, EndsWithTheSessionWithTheDefaultRoleHandedBack) {
    restoreOnQuit();
    session.bus->stop();
    expectEndWithRestore();
    session.bus.reset();
}

TEST_F(Lifecycle, KeepsTheDefaultRoleWhereThatIsWanted) {
    session.startBus();
    session.startFernhop();
    session.resident->signal(SIGTERM);
    EXPECT_EQ(session.resident->wait(), 0);
    EXPECT_NE(defaults().find("https=org.fernhop.Fernhop.desktop"), std::string::npos) << defaults();
}

// An installation in the user's folder sorts first where no handler is set.
TEST_F(Lifecycle, LinksThatItGetsByItsInstallationAloneGoWhereTheyWentBefore) {
    const support::RecordingBrowser first(session.home, "a-first");
    session.home.writeDesktopEntry("a-first", first.desktopEntry());
    session.home.write(session.home.config() + "/mimeapps.list", "");
    session.home.write(session.home.applications() + "/mimeinfo.cache",
                       "[MIME Cache]\nx-scheme-handler/https=org.fernhop.Fernhop.desktop;web.desktop;\n"
                       "x-scheme-handler/http=org.fernhop.Fernhop.desktop;web.desktop;\n");
    session.startBus();
    session.startFernhop();
    EXPECT_EQ(session.open({"https://example.org/"}), 0);
    EXPECT_EQ(session.opened(1), std::vector<std::string>{"https://example.org/"});
    ASSERT_EQ(session.fernhop({"status"}), 0);
    EXPECT_NE(session.output().find("App Routing:        on"), std::string::npos) << session.output();
    EXPECT_NE(session.output().find("They go to Fernhop because"), std::string::npos) << session.output();
    EXPECT_EQ(defaults(), "");
    ASSERT_EQ(session.fernhop({"routing", "off"}), 0) << session.output();
    EXPECT_NE(defaults().find("https=web.desktop"), std::string::npos) << defaults();
}

} // namespace
} // namespace fernhop::desktoptest
