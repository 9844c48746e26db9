#include "BusSender.h"
#include "LinkSession.h"
#include "SilentBrowser.h"
#include "platform/linux/base/Bus.h"
#include "support/MainLoop.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <thread>
#include <utility>

namespace fernhop::desktoptest {
namespace {

namespace files = std::filesystem;
using Links = std::vector<std::string>;
using Stub = std::unique_ptr<support::ChildProcess>;

/// systemd's user manager, as far as the stub asks it. `onAsked` returns the environment of the session, or
/// null: an error is answered.
class UserManager {
  public:
    UserManager(GDBusConnection *bus, std::function<GVariant *()> onAsked)
        : manager(bus, "/org/freedesktop/systemd1", *node->interfaces[0],
                  {{}, [asked = std::move(onAsked)](auto) { return asked(); }}) {
        g_variant_unref(g_dbus_connection_call_sync(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                    "org.freedesktop.DBus", "RequestName",
                                                    g_variant_new("(su)", "org.freedesktop.systemd1", 0U),
                                                    nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    }

  private:
    std::unique_ptr<GDBusNodeInfo, freedesktop::GDelete<g_dbus_node_info_unref>> node{
        g_dbus_node_info_new_for_xml("<node><interface name='org.freedesktop.systemd1.Manager'>"
                                     "<property name='Environment' type='as' access='read'/>"
                                     "</interface></node>",
                                     nullptr)};
    freedesktop::BusObject manager;
};

/// A stub that has to start the resident, as the bus cannot.
class StubStart : public testing::Test {
  protected:
    StubStart() {
        files::create_directory(programs.root() + "/bin");
        files::copy(support::buildFolder() + "/bin/fernhop-open", session.program("fernhop-open"));
        // Writes down that it was started.
        const auto fernhop = support::buildFolder() + "/bin/fernhop";
        session.home.writeProgram(session.program("fernhop"),
                                  "#!/bin/sh\n[ \"$1\" = --without-bus ] || echo $$ >> " + started() +
                                      "\nexec " + fernhop + " \"$@\"\n");
        session.startBus();
        sender = std::make_unique<BusSender>(session.bus->address());
    }
    ~StubStart() override { session.killResident(SIGKILL); }

    [[nodiscard]] std::string started() const { return session.home.root() + "/started"; }
    [[nodiscard]] std::ptrdiff_t starts() const {
        std::ifstream file(started());
        return std::count(std::istreambuf_iterator<char>(file), {}, '\n');
    }
    [[nodiscard]] Stub open(const std::string &link, const support::Environment &more = {}) {
        return session.start({session.program("fernhop-open"), link}, more);
    }
    [[nodiscard]] static bool ends(const Stub &stub) {
        return support::runUntil([&] { return !stub->isRunning(); });
    }
    void expectOpened(const std::set<std::string> &links) {
        EXPECT_TRUE(support::runUntil([&] {
            const auto opened = session.browser.links();
            return std::set(opened.begin(), opened.end()) == links;
        })) << testing::PrintToString(session.browser.links())
            << session.output();
    }
    /// The variables that the running Fernhop was started with.
    [[nodiscard]] std::set<std::string> residentVariables() {
        std::ifstream file("/proc/" + std::to_string(session.residentPid()) + "/environ");
        std::set<std::string> variables;
        for (std::string variable; std::getline(file, variable, '\0');)
            variables.insert(variable);
        return variables;
    }

    support::TemporaryHome programs;
    LinkSession session{programs.root() + "/bin"};
    std::unique_ptr<BusSender> sender;
};

TEST_F(StubStart, FiftyAtOnceStartOneFernhop) {
    std::vector<Stub> stubs;
    std::set<std::string> links;
    for (int number = 0; number < 50; ++number) {
        const auto link = "https://" + std::to_string(number) + "/";
        links.insert(link);
        stubs.push_back(open(link));
    }
    for (const auto &stub : stubs)
        EXPECT_EQ(stub->wait(), 0);
    expectOpened(links);
    EXPECT_EQ(starts(), 1);
}

TEST_F(StubStart, OneThatIsStoppedInItsTurnDoesNotStopTheOthers) {
    Stub first;
    bool isStopped = false;
    const UserManager manager(sender->connection(), [&]() -> GVariant * {
        if (first && !std::exchange(isStopped, true))
            first->signal(SIGSTOP);
        return nullptr;
    });
    first = open("https://1/");
    ASSERT_TRUE(support::runUntil([&] { return isStopped; }));
    const auto second = open("https://2/");
    ASSERT_TRUE(ends(second));
    EXPECT_EQ(second->wait(), 0);
    expectOpened({"https://2/"});
    first->signal(SIGCONT);
    ASSERT_TRUE(ends(first));
    EXPECT_EQ(first->wait(), 0);
    expectOpened({"https://1/", "https://2/"});
}

TEST_F(StubStart, GivesFernhopTheEnvironmentOfTheSession) {
    session.environment["SESSION_TEST"] = "the session's";
    const auto ofSession = session.environment;
    const UserManager manager(sender->connection(), [&] {
        GVariantBuilder list;
        g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
        for (const auto &[name, value] : ofSession)
            if (value && name != "DBUS_SESSION_BUS_ADDRESS")
                g_variant_builder_add(&list, "s", (name + '=' + *value).c_str());
        return g_variant_builder_end(&list);
    });
    const auto stub = open("https://1/", {{"SESSION_TEST", "the stub's"},
                                          {"STUB_TEST", "1"},
                                          {"HOME", "/nonexistent"},
                                          {"XDG_SESSION_DESKTOP", "test"}});
    ASSERT_TRUE(ends(stub));
    EXPECT_EQ(stub->wait(), 0);
    expectOpened({"https://1/"});
    auto start = session.browser.starts().at(0);
    EXPECT_EQ(start.environment["SESSION_TEST"], "the session's");
    EXPECT_EQ(start.environment["HOME"], session.home.home());
    EXPECT_EQ(start.environment.count("STUB_TEST"), 0U);
    EXPECT_EQ(start.environment["XDG_SESSION_DESKTOP"], "test") << "the manager does not know the desktop";
    EXPECT_EQ(start.folder, session.home.home());
}

TEST_F(StubStart, KeepsFromFernhopWhatBelongsToOneLaunch) {
    EXPECT_EQ(open("https://1/", {{"SESSION_TEST", "1"},
                                  {"XDG_ACTIVATION_TOKEN", "token"},
                                  {"INVOCATION_ID", "1"},
                                  {"LD_LIBRARY_PATH", "/nonexistent"}})
                  ->wait(),
              0);
    expectOpened({"https://1/"});
    const auto variables = residentVariables();
    EXPECT_EQ(variables.count("SESSION_TEST=1"), 1U);
    for (const char *variable :
         {"XDG_ACTIVATION_TOKEN=token", "INVOCATION_ID=1", "LD_LIBRARY_PATH=/nonexistent"})
        EXPECT_EQ(variables.count(variable), 0U) << variable;
}

TEST_F(StubStart, KillsOfFernhopInARowLoseNoLink) {
    using namespace std::chrono_literals;
    std::vector<Stub> stubs;
    std::set<std::string> links;
    const auto isOpening = [&] {
        return std::ranges::any_of(stubs, [](const auto &stub) { return stub->isRunning(); });
    };
    constexpr int sendingRounds = 20;
    for (int round = 0; round < sendingRounds || (round < 200 && isOpening()); ++round) {
        for (int number = 0; round < sendingRounds && number < 2; ++number) {
            const auto link = "https://" + std::to_string(round) + "/" + std::to_string(number);
            links.insert(link);
            stubs.push_back(open(link));
        }
        std::this_thread::sleep_for(80ms);
        if (const pid_t pid = session.residentPid(); pid > 0)
            kill(pid, SIGKILL);
    }
    for (const auto &stub : stubs)
        EXPECT_EQ(stub->wait(), 0);
    expectOpened(links);
}

/// Fernhop is killed while it has a link that is not with its browser yet.
class DeadlyLink : public StubStart {
  protected:
    DeadlyLink() {
        session.home.writeDesktopEntry(
            "web", "[Desktop Entry]\nType=Application\nName=web\nHidden=true\nExec=true\n");
        session.home.writeDesktopEntry("org.example.Silent", SilentBrowser::desktopEntry);
    }
    /// Opens a link and kills Fernhop so many times, each time that it has the link; the number of kills.
    std::size_t killTimes(std::size_t most, const Stub &stub) {
        while (browser.asked.size() < most) {
            const auto before = browser.asked.size();
            if (!support::runUntil([&] { return browser.asked.size() > before || !stub->isRunning(); }) ||
                browser.asked.size() == before)
                break;
            session.killResident(SIGKILL);
        }
        return browser.asked.size();
    }

    SilentBrowser browser{sender->connection()};
};

TEST_F(DeadlyLink, CostsOneAttemptForEachKill) {
    const auto stub = open("https://1/");
    ASSERT_EQ(killTimes(4, stub), 4U) << "the link was lost";
    ASSERT_TRUE(support::runUntil([&] { return browser.asked.size() == 5; }));
    browser.answer();
    ASSERT_TRUE(ends(stub));
    EXPECT_EQ(stub->wait(), 0) << session.output();
}

TEST_F(DeadlyLink, IsNotDeliveredForEver) {
    const auto stub = open("https://1/");
    EXPECT_EQ(killTimes(1000, stub), 5U);
    EXPECT_TRUE(ends(stub));
}

} // namespace
} // namespace fernhop::desktoptest
