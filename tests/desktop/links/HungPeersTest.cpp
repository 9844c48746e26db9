// Programs that Fernhop talks to have been stopped, and stay so: links go on, and the command line answers.

#include "LinkSession.h"
#include "StoppedClient.h"
#include "platform/linux/base/Files.h"
#include "support/HeadlessKWin.h"
#include "support/HeadlessSway.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fernhop::desktoptest {
namespace {

/// A program that Fernhop talks to.
class Peer {
  public:
    virtual ~Peer() = default;
    /// Leads Fernhop to it. Called before the bus is there.
    virtual void begin() {}
    /// Stops it. Called when the bus is there, and perhaps Fernhop.
    virtual void stop() = 0;
};

template <typename Display>
class DisplayPeer : public Peer {
  public:
    template <typename... Arguments>
    explicit DisplayPeer(LinkSession &linkSession, const Arguments &...arguments)
        : session(linkSession), display(arguments...) {}

    void begin() override {
        const auto variables = display.environment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE"})
            session.environment[name] = variables.count(name) != 0 ? variables.at(name) : std::nullopt;
    }
    void stop() override { display.stop(); }

  private:
    LinkSession &session;
    Display display;
};

class BusPeer : public Peer {
  public:
    BusPeer(LinkSession &linkSession, std::vector<std::string> busNames)
        : session(linkSession), names(std::move(busNames)) {}

    void stop() override {
        for (const auto &name : names)
            clients.push_back(std::make_unique<StoppedClient>(session.bus->address(), name));
    }

  private:
    LinkSession &session;
    std::vector<std::string> names;
    std::vector<std::unique_ptr<StoppedClient>> clients;
};

/// A program that is changing the settings.
class SettingsWriter : public Peer {
  public:
    explicit SettingsWriter(LinkSession &linkSession) : session(linkSession) {}

    void stop() override {
        const auto folder = session.home.config() + "/fernhop";
        std::filesystem::create_directories(folder);
        lock = freedesktop::FileLock::acquire(folder + "/org.fernhop.Fernhop.plist.lock",
                                              std::chrono::seconds(30));
        EXPECT_TRUE(lock);
    }

  private:
    LinkSession &session;
    std::optional<freedesktop::FileLock> lock;
};

struct PeerKind {
    const char *name;
    std::function<bool()> isAvailable;
    std::function<std::unique_ptr<Peer>(LinkSession &)> make;
};

PeerKind onTheBus(const char *name, const std::vector<std::string> &names) {
    return {name, [] { return true; },
            [names](LinkSession &session) { return std::make_unique<BusPeer>(session, names); }};
}

const std::vector<PeerKind> kinds{
    {"XServer", support::PrivateDisplay::isAvailable,
     [](LinkSession &session) {
         return std::make_unique<DisplayPeer<support::PrivateDisplay>>(session, session.home);
     }},
    {"Sway", support::HeadlessSway::isAvailable,
     [](LinkSession &session) { return std::make_unique<DisplayPeer<support::HeadlessSway>>(session); }},
    {"KWin", support::HeadlessKWin::isAvailable,
     [](LinkSession &session) { return std::make_unique<DisplayPeer<support::HeadlessKWin>>(session); }},
    {"SettingsWriter", [] { return true; },
     [](LinkSession &session) { return std::make_unique<SettingsWriter>(session); }},
    onTheBus("Panel", {"org.kde.StatusNotifierWatcher"}),
    onTheBus("Portal", {"org.freedesktop.portal.Desktop", "org.freedesktop.impl.portal.PermissionStore"}),
    onTheBus("Systemd", {"org.freedesktop.systemd1"}),
};

class HungPeers : public testing::TestWithParam<PeerKind> {
  protected:
    void SetUp() override {
        if (!GetParam().isAvailable())
            GTEST_SKIP() << "not installed";
        session.home.writeDesktopEntry("web", session.browser.desktopEntry("StartupNotify=true\n"));
        peer = GetParam().make(session);
        peer->begin();
        session.startBus();
    }

    /// Several times, as a server takes a while to seem stopped: it has buffers.
    void expectService() {
        for (const std::string &link : {"https://1/", "https://2/", "https://3/"}) {
            const auto stub = session.start({session.program("fernhop-open"), link});
            ASSERT_TRUE(support::waitUntil([&] {
                return std::ranges::count(session.browser.links(), link) == 1;
            })) << link
                << ' ' << session.log();
            const auto status = session.start({session.program("fernhop"), "status"});
            ASSERT_TRUE(support::waitUntil([&] { return !status->isRunning(); })) << session.log();
            EXPECT_EQ(status->wait(), 0) << session.output();
        }
    }

    LinkSession session;
    std::unique_ptr<Peer> peer;
};

TEST_P(HungPeers, DoNotHoldUpLinksFromTheStart) {
    peer->stop();
    session.startFernhop();
    expectService();
}

TEST_P(HungPeers, DoNotHoldUpLinksLater) {
    session.startFernhop();
    ASSERT_EQ(session.open({"https://0/"}), 0) << session.output();
    peer->stop();
    expectService();
}

INSTANTIATE_TEST_SUITE_P(Each, HungPeers, testing::ValuesIn(kinds),
                         [](const auto &information) { return information.param.name; });

} // namespace
} // namespace fernhop::desktoptest
