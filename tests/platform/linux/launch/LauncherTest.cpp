#include "platform/linux/launch/Launcher.h"

#include "BusApplication.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/launch/BusLaunch.h"
#include "platform/linux/source/FakeFocusProvider.h"
#include "support/MainLoop.h"
#include "support/PrivateBus.h"
#include "support/RecordingBrowser.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using support::PrivateBus;
using support::RecordingBrowser;
using support::runUntil;
using support::TemporaryHome;

class LauncherTest : public testing::Test {
  protected:
    DesktopEntry entryOf(const std::string &id, const std::string &text) {
        auto entry = parseDesktopEntry(text, {}, {}).value_or(DesktopEntry{});
        entry.id = id;
        entry.path = home.applications() + "/" + id + ".desktop";
        return entry;
    }
    DesktopEntry browserEntry(const std::string &more = {}) {
        return entryOf("org.example.Web", browser.desktopEntry(more));
    }
    DesktopEntry programEntry(const std::string &exec, const std::string &more = {}) {
        return entryOf("org.example.Web",
                       "[Desktop Entry]\nType=Application\nName=Web\nExec=" + exec + "\n" + more);
    }
    DesktopEntry script(const std::string &body) {
        const auto file = home.root() + "/script" + std::to_string(++scripts);
        home.writeProgram(file, "#!/bin/sh\n" + body + "\n");
        return programEntry(file + " %u");
    }

    void start(GDBusConnection *bus = nullptr) {
        launcher = std::make_unique<Launcher>(LauncherServices{environment, bus, &focus});
    }
    void launch(const DesktopEntry &entry, LaunchTokens tokens = {}, bool activates = true) {
        if (!launcher)
            start();
        auto delivery = std::shared_ptr<const void>(&home, [this](const void *) { ++deliveriesHandled; });
        launcher->launch({entry, {"https://a/"}, std::move(tokens), activates, std::move(delivery)},
                         [this](const auto &, const std::optional<OpenError> &error) {
                             outcomes.push_back(error ? error->localizedDescription : "opened");
                         });
    }
    std::string outcome() {
        EXPECT_TRUE(runUntil([this] { return !outcomes.empty(); }));
        return outcomes.size() == 1 ? outcomes.front() : "not exactly one outcome";
    }
    support::BrowserStart onlyStart() {
        EXPECT_TRUE(runUntil([this] { return !browser.starts().empty(); }));
        const auto starts = browser.starts();
        EXPECT_EQ(starts.size(), 1U);
        return starts.empty() ? support::BrowserStart{} : starts.front();
    }

    TemporaryHome home;
    RecordingBrowser browser{home, "Web"};
    Environment environment{{"PATH=" + home.root() + "/bin:/usr/bin:/bin", "XDG_ACTIVATION_TOKEN=ours",
                             "DESKTOP_STARTUP_ID=ours", "JOURNAL_STREAM=8:1"}};
    fakes::FakeFocusProvider focus;
    std::vector<std::string> outcomes;
    int deliveriesHandled = 0;
    int scripts = 0;
    std::unique_ptr<Launcher> launcher;
};

TEST_F(LauncherTest, OpensTheLinkInTheProgramOfTheEntry) {
    launch(browserEntry());
    EXPECT_EQ(onlyStart().arguments, std::vector<std::string>{"https://a/"});
    EXPECT_EQ(outcome(), "opened");
    EXPECT_EQ(deliveriesHandled, 1);
}

TEST_F(LauncherTest, TheChildHasAnEnvironmentOfItsOwn) {
    launch(browserEntry("Path=" + home.home() + "\n"), {"token", std::nullopt});
    const auto started = onlyStart();
    EXPECT_EQ(started.environment.at("XDG_ACTIVATION_TOKEN"), "token");
    EXPECT_EQ(started.environment.count("DESKTOP_STARTUP_ID"), 0U);
    EXPECT_EQ(started.environment.count("JOURNAL_STREAM"), 0U);
    EXPECT_EQ(started.environment.at("GIO_LAUNCHED_DESKTOP_FILE"), browserEntry().path);
    EXPECT_EQ(started.environment.at("GIO_LAUNCHED_DESKTOP_FILE_PID"), std::to_string(started.pid));
    EXPECT_EQ(started.folder, home.home());
}

TEST_F(LauncherTest, OnWaylandAStartupIdIsATokenToo) {
    environment.set("WAYLAND_DISPLAY", "wayland-9");
    launch(browserEntry(), {std::nullopt, "startup"});
    EXPECT_EQ(onlyStart().environment.at("XDG_ACTIVATION_TOKEN"), "startup");
    EXPECT_EQ(onlyStart().environment.at("DESKTOP_STARTUP_ID"), "startup");
}

TEST_F(LauncherTest, RaisesTheBrowserWhenTheRequestActivates) {
    launch(browserEntry());
    ASSERT_EQ(focus.raised.size(), 1U);
    EXPECT_EQ(focus.raised[0].desktopID, "org.example.Web");
    EXPECT_EQ(focus.raised[0].pid, onlyStart().pid);
}

TEST_F(LauncherTest, DoesNotRaiseTheBrowserOtherwise) {
    launch(browserEntry(), {}, false);
    EXPECT_EQ(outcome(), "opened");
    EXPECT_TRUE(focus.raised.empty());
}

TEST_F(LauncherTest, AMissingProgramIsAnErrorAtOnce) {
    launch(programEntry("/nowhere/browser %u"));
    EXPECT_EQ(outcomes, std::vector<std::string>{"/nowhere/browser: No such file or directory"});
    EXPECT_EQ(deliveriesHandled, 1);
    EXPECT_TRUE(focus.raised.empty());
}

TEST_F(LauncherTest, ALauncherScriptThatCannotRunItsProgramFailed) {
    launch(script("exec /nowhere/browser"));
    EXPECT_EQ(outcome(), "No such file or directory");
}

TEST_F(LauncherTest, WhatStillRunsCountsAsOpened) {
    launch(script("read line; exit 127"));
    launch(script("exec sleep 1000"));
    ASSERT_TRUE(runUntil([&] { return outcomes.size() == 1; }));
    EXPECT_EQ(outcomes[0], "No such file or directory") << "standard input is at its end";
    launcher.reset();
    EXPECT_EQ(outcomes.size(), 2U);
    EXPECT_EQ(outcomes[1], "opened");
    kill(focus.raised[1].pid.value(), SIGKILL);
}

TEST_F(LauncherTest, NeverLaunchesFernhopOrALinkOpener) {
    const std::string fernhop = "[Desktop Entry]\nType=Application\nName=Fernhop\nExec=/bin/true %U\n";
    launch(entryOf("org.fernhop.Fernhop", fernhop));
    launch(programEntry("xdg-open %u"));
    launch(programEntry("/opt/fernhop/bin/fernhop-open %u"));
    ASSERT_EQ(outcomes.size(), 3U);
    for (const auto &told : outcomes)
        EXPECT_NE(told, "opened");
}

TEST_F(LauncherTest, ATerminalProgramRunsInATerminal) {
    home.writeProgram(home.root() + "/bin/xdg-terminal-exec", "#!/bin/sh\nexec \"$@\" in-terminal\n");
    launch(browserEntry("Terminal=true\n"));
    EXPECT_EQ(onlyStart().arguments, (std::vector<std::string>{"https://a/", "in-terminal"}));
}

TEST_F(LauncherTest, LaunchesAProgramOfOneUrlOncePerLink) {
    start();
    launcher->launch({browserEntry(), {"https://1", "https://2"}, {"token", std::nullopt}, true, nullptr},
                     [this](const auto &, const auto &) { outcomes.emplace_back("opened"); });
    ASSERT_TRUE(runUntil([this] { return browser.starts().size() == 2 && !outcomes.empty(); }));
    EXPECT_EQ(browser.links(), (std::vector<std::string>{"https://1", "https://2"}));
    EXPECT_EQ(browser.starts()[0].environment.at("XDG_ACTIVATION_TOKEN"), "token");
    EXPECT_EQ(browser.starts()[1].environment.count("XDG_ACTIVATION_TOKEN"), 0U);
    EXPECT_EQ(outcomes.size(), 1U);
}

constexpr const char *applicationXml = "<interface name='org.freedesktop.Application'><method name='Open'>"
                                       "<arg type='as' direction='in'/><arg type='a{sv}' direction='in'/>"
                                       "</method></interface>";

class BusLauncherTest : public LauncherTest {
  protected:
    BusLauncherTest() { start(connection.get()); }
    ~BusLauncherTest() override { launcher.reset(); }

    DesktopEntry activatable() { return browserEntry("DBusActivatable=true\n"); }

    PrivateBus bus{home};
    BusConnection connection = connectTo(bus.address());
};

TEST_F(BusLauncherTest, AnActivatableBrowserIsAskedOverTheBus) {
    BusApplication application(bus.address(), "org.example.Web", "/org/example/Web", applicationXml);
    launch(activatable(), {"token", "id"});
    EXPECT_EQ(deliveriesHandled, 0) << "the link has not been handed over yet";
    EXPECT_EQ(outcome(), "opened");
    EXPECT_EQ(
        application.received,
        std::vector<std::string>{"Open(['https://a/'], {'activation-token': <'token'>, 'desktop-startup-id': "
                                 "<'id'>})"});
    EXPECT_EQ(deliveriesHandled, 1);
    EXPECT_TRUE(browser.starts().empty());
    EXPECT_EQ(focus.raised.at(0).pid, std::nullopt);
}

TEST_F(BusLauncherTest, OneThatDoesNotAnswerFailed) {
    // It has its name, and drops every call.
    const BusConnection stopped = connectTo(bus.address());
    g_dbus_connection_add_filter(
        stopped.get(),
        [](auto *, GDBusMessage *message, gboolean incoming, gpointer) -> GDBusMessage * {
            if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
                return message;
            g_object_unref(message);
            return nullptr;
        },
        nullptr, nullptr);
    const GVariantPointer named(g_dbus_connection_call_sync(
        stopped.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", "org.example.Web", 4U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    std::string reason;
    openThroughBus(
        connection.get(), "org.example.Web", {"https://a/"}, {},
        [&](const Result<BusOpening> &result) { reason = result ? "opened" : result.failure().reason; },
        std::chrono::milliseconds(20));
    EXPECT_TRUE(runUntil([&] { return !reason.empty(); }));
    EXPECT_EQ(reason, "The application does not answer");
}

TEST_F(BusLauncherTest, TheObjectPathFollowsFromTheIdentifier) {
    BusApplication application(bus.address(), "org.example-site.Web-2", "/org/example_site/Web_2",
                               applicationXml);
    auto entry = activatable();
    entry.id = "org.example-site.Web-2";
    launch(entry);
    EXPECT_EQ(outcome(), "opened");
    EXPECT_EQ(application.received.size(), 1U);
}

TEST_F(BusLauncherTest, ItsErrorsAreFailures) {
    BusApplication application(bus.address(), "org.example.Web", "/org/example/Web", applicationXml);
    application.failure = "no window for you";
    launch(activatable());
    EXPECT_EQ(outcome(), "no window for you");
    EXPECT_TRUE(browser.starts().empty());
    EXPECT_TRUE(focus.raised.empty());
}

TEST_F(BusLauncherTest, ItsErrorsAreToldInShort) {
    BusApplication application(bus.address(), "org.example.Web", "/org/example/Web", applicationXml);
    application.failure = "no window for you, " + std::string(1'000'000, 'x') + " not today";
    launch(activatable());
    const auto told = outcome();
    EXPECT_LE(told.size(), 1024U);
    EXPECT_TRUE(told.starts_with("no window for you, x") && told.ends_with("x not today")) << told;
}

TEST_F(BusLauncherTest, WithoutItsServiceItsProgramIsRun) {
    launch(activatable());
    EXPECT_EQ(onlyStart().arguments, std::vector<std::string>{"https://a/"});
    EXPECT_EQ(outcome(), "opened");
    EXPECT_EQ(deliveriesHandled, 1);
}

TEST_F(BusLauncherTest, WithoutTheInterfaceItsProgramIsRun) {
    BusApplication application(bus.address(), "org.example.Web", "/org/example/Web",
                               "<interface name='org.example.Other'><method name='Open'/></interface>");
    launch(activatable());
    EXPECT_EQ(onlyStart().arguments, std::vector<std::string>{"https://a/"});
}

TEST_F(BusLauncherTest, AnIdentifierThatIsNoBusNameIsRunAsAProgram) {
    auto entry = activatable();
    entry.id = "web";
    launch(entry);
    EXPECT_EQ(onlyStart().arguments, std::vector<std::string>{"https://a/"});
}

TEST_F(BusLauncherTest, WithoutServiceAndProgramItIsAnError) {
    auto entry = activatable();
    entry.exec.clear();
    launch(entry);
    EXPECT_EQ(outcome(), entry.path + ": the Exec line cannot be used");
}

TEST_F(BusLauncherTest, CanBeDestroyedDuringABusCall) {
    BusApplication application(bus.address(), "org.example.Web", "/org/example/Web", applicationXml);
    launch(activatable());
    launcher.reset();
    EXPECT_TRUE(runUntil([&] { return deliveriesHandled == 1; }));
    EXPECT_EQ(outcomes, std::vector<std::string>{"opened"});
}

constexpr const char *systemdXml =
    "<interface name='org.freedesktop.systemd1.Manager'><method name='StartTransientUnit'>"
    "<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='a(sv)' direction='in'/>"
    "<arg type='a(sa(sv))' direction='in'/></method></interface>";

TEST_F(BusLauncherTest, MovesTheBrowserIntoAUnitOfItsOwn) {
    BusApplication systemd(bus.address(), "org.freedesktop.systemd1", "/org/freedesktop/systemd1",
                           systemdXml);
    launch(browserEntry());
    ASSERT_TRUE(runUntil([&] { return !systemd.received.empty(); }));
    const auto &call = systemd.received[0];
    EXPECT_TRUE(call.starts_with("StartTransientUnit('app-fernhop-org.example.Web-")) << call;
    EXPECT_NE(call.find(".scope', 'fail'"), std::string::npos) << call;
    EXPECT_NE(call.find("('PIDs', <[uint32 " + std::to_string(onlyStart().pid) + "]>)"), std::string::npos)
        << call;
}

} // namespace
} // namespace fernhop::freedesktop
