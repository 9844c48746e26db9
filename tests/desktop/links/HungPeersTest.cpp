// Programs that Fernhop talks to have been stopped, and stay so: links go on, and the command line answers.

#include "BusSender.h"
#include "LinkSession.h"
#include "SilentBrowser.h"
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
#include <fstream>
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

    void resume() { lock.reset(); }
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

/// The physical memory of a process, in KiB.
long memoryOf(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("VmRSS:", 0) == 0)
            return std::stol(line.substr(6));
    return 0;
}

TEST(HungClient, FloodsInVain) {
    LinkSession session;
    session.startBus();
    session.startFernhop();
    const long before = memoryOf(session.resident->pid());
    const StoppedClient client(session.bus->address(), "");
    constexpr int calls = 2'000;
    client.flood(calls, "/MenuBar", "com.canonical.dbusmenu", "GetLayout", "iias", 0, -1, 0);
    client.flood(calls, "/MenuBar", "com.canonical.dbusmenu", "AboutToShow", "i", 0);
    client.flood(calls, "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll", "s",
                 "org.kde.StatusNotifierItem");
    client.flood(calls, "/org/fernhop/Fernhop", "org.fernhop.Fernhop", "Perform", "asaya{sv}", 1, "status", 0,
                 0);
    const std::string large(std::size_t{1} << 20, 'x');
    client.flood(20, "/MenuBar", "com.canonical.dbusmenu", "Event", "isvu", 0, "opened", "s", large.c_str(),
                 0);
    EXPECT_EQ(session.open({"https://1/"}), 0) << session.output();
    EXPECT_EQ(session.fernhop({"status"}), 0) << session.output();
    client.waitUntilHandled();
    const long most = before + 16L * 1024;
    EXPECT_TRUE(FERNHOP_SANITIZED ||
                support::waitUntil([&] { return memoryOf(session.resident->pid()) < most; }))
        << before << " KiB, then " << memoryOf(session.resident->pid());
}

TEST(HungBrowser, HoldsUpOnlyItsOwnLinks) {
    LinkSession session;
    session.home.writeDesktopEntry("org.example.Silent", SilentBrowser::desktopEntry);
    session.startBus();
    session.startFernhop();
    ASSERT_EQ(session.fernhop({"url-rules", "add", "silent.example", "org.example.Silent"}), 0)
        << session.output();
    ASSERT_EQ(session.fernhop({"default", "web"}), 0) << session.output();
    const StoppedClient browser(session.bus->address(), "org.example.Silent");
    const auto waiting = session.start({session.program("fernhop-open"), "https://silent.example/"});
    for (const std::string link : {"https://1/", "https://2/"}) {
        EXPECT_EQ(session.open({link}), 0) << session.output();
        EXPECT_EQ(session.fernhop({"status"}), 0) << session.output();
    }
    EXPECT_EQ(session.opened(2), (std::vector<std::string>{"https://1/", "https://2/"}));
    EXPECT_TRUE(waiting->isRunning()) << "the link is not with its browser yet";
}

TEST(HungSettingsWriter, FailsCommandsAndHoldsUpNoLink) {
    LinkSession session;
    session.startBus();
    session.startFernhop();
    SettingsWriter writer(session);
    writer.stop();
    const auto add = [&](const std::string &pattern) {
        return std::vector<std::string>{session.program("fernhop"), "url-rules", "add", pattern, "web"};
    };
    std::vector<std::unique_ptr<support::ChildProcess>> commands;
    for (const std::string pattern : {"1", "2", "3", "4"})
        commands.push_back(session.start(add(pattern)));
    commands.push_back(session.start({session.program("fernhop-open"), "https://1/"}));
    for (const auto &command : commands)
        EXPECT_TRUE(support::waitUntil([&] { return !command->isRunning(); }));
    EXPECT_EQ(session.opened(1), std::vector<std::string>{"https://1/"});
    EXPECT_EQ(session.run(add("5")), 1);
    EXPECT_EQ(session.output(), "fernhop: The change could not be stored.\n");
    writer.resume();
    EXPECT_EQ(session.run(add("6")), 0) << session.output();
}

TEST(HungFernhop, IsReportedByTheCommandLine) {
    LinkSession session;
    session.startBus();
    session.startFernhop();
    session.resident->signal(SIGSTOP);
    const auto status = session.start({session.program("fernhop"), "status"});
    EXPECT_TRUE(support::waitUntil([&] { return !session.output().empty(); }));
    EXPECT_EQ(session.output(), "fernhop: Fernhop is not answering yet.\n");
    session.resident->signal(SIGCONT);
    EXPECT_EQ(status->wait(), 0) << session.output();
}

/// What starts Fernhop's program for links as GIO does, but sends no signal about it.
class LauncherWithoutSignal : public testing::Test {
  protected:
    void SetUp() override {
        session.startBus();
        session.startFernhop();
    }

    LinkSession session;
};

constexpr std::size_t manyLinks = 40;

std::vector<std::string> numbered(const std::string &link) {
    std::vector<std::string> links;
    for (std::size_t number = 0; number < manyLinks; ++number)
        links.push_back(link + std::to_string(number));
    return links;
}

TEST_F(LauncherWithoutSignal, HoldsUpNobodyElse) {
    // Any program may say that it was started in this way.
    const std::string program = session.home.root() + "/bin/fernhop-open";
    std::filesystem::create_directories(session.home.root() + "/bin");
    std::filesystem::copy_file("/bin/sleep", program);
    const auto launched = session.start({program, "1000"});
    BusSender sender(session.bus->address());
    for (const auto &link : numbered("https://claim/")) {
        GVariantDict data;
        g_variant_dict_init(&data, nullptr);
        g_variant_dict_insert(&data, "launched-pid", "i", static_cast<int>(launched->pid()));
        sender.open({link}, g_variant_dict_end(&data));
    }
    const auto stub = session.start({session.program("fernhop-open"), "https://other/"});
    const auto status = session.start({session.program("fernhop"), "status"});
    EXPECT_TRUE(support::waitUntil([&] { return !status->isRunning() && !stub->isRunning(); }));
    EXPECT_TRUE(support::runUntil([&] { return sender.answered == manyLinks; }));
    auto expected = numbered("https://claim/");
    auto links = session.opened(manyLinks + 1);
    EXPECT_EQ(std::erase(links, "https://other/"), 1U);
    EXPECT_EQ(links, expected);
}

TEST_F(LauncherWithoutSignal, IsWaitedForOnce) {
    const std::string asGio = "GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec \"$@\"";
    const auto launcher =
        session.start({"sh", "-c",
                       "for number in $(seq 0 39); do sh -c '" + asGio + "' sh " +
                           session.program("fernhop-open") + " https://1/$number; done; true"});
    EXPECT_TRUE(support::waitUntil([&] { return !launcher->isRunning(); })) << session.output();
    EXPECT_EQ(session.opened(manyLinks), numbered("https://1/"));
}

INSTANTIATE_TEST_SUITE_P(Each, HungPeers, testing::ValuesIn(kinds),
                         [](const auto &information) { return information.param.name; });

} // namespace
} // namespace fernhop::desktoptest
