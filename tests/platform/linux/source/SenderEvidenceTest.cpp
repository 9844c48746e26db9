#include "platform/linux/source/SenderEvidence.h"

#include "FakeFocusProvider.h"
#include "FakeProcesses.h"
#include "fakes/FakeDesktopEntries.h"
#include "platform/linux/service/BusClient.h"
#include "platform/linux/source/SourceNotifications.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <fstream>

namespace fernhop::freedesktop {
namespace {

constexpr pid_t fernhopPid = 7;
constexpr pid_t stub = 500;

/// A bus with signals of launches as GLib sends them.
class SenderEvidenceTest : public testing::Test {
  protected:
    void SetUp() override {
        for (const auto *const id : {"mail", "chat", "notes", "terminal"})
            entries.install(std::string("org.example.") + id, std::string("/usr/bin/") + id + " %u");
        entries.install("org.fernhop.Fernhop", "fernhop-open %U");
        entries.install("org.kde.plasmashell", "/usr/bin/plasmashell");
        waitForBus();
    }

    /// Waits until all earlier requests have reached the bus.
    void waitForBus() {
        const GVariantPointer answer(g_dbus_connection_call_sync(
            bus.get(), "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId", nullptr, nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        ASSERT_TRUE(answer);
    }

    void emit(GVariant *parameters) {
        g_dbus_connection_emit_signal(launcher.get(), nullptr, "/org/gtk/gio/DesktopAppInfo",
                                      "org.gtk.gio.DesktopAppInfo", "Launched", parameters, nullptr);
        g_dbus_connection_flush_sync(launcher.get(), nullptr, nullptr);
    }

    void signalLaunch(pid_t child, pid_t origin, const std::string &program, const std::string &desktopFile) {
        emitLaunch(child, origin, program, desktopFile);
        ASSERT_TRUE(support::runUntil([&] { return signals.launchOf(child).has_value(); }));
    }

    void emitLaunch(pid_t child, pid_t origin, const std::string &program, const std::string &desktopFile) {
        GVariantBuilder more;
        g_variant_builder_init(&more, G_VARIANT_TYPE_VARDICT);
        g_variant_builder_add(&more, "{sv}", "origin-pid", g_variant_new_int64(origin));
        g_variant_builder_add(&more, "{sv}", "origin-prgname", g_variant_new_bytestring(program.c_str()));
        if (!desktopFile.empty())
            g_variant_builder_add(&more, "{sv}", "origin-desktop-file",
                                  g_variant_new_bytestring(desktopFile.c_str()));
        const char *const uris[] = {"https://example.org/", nullptr};
        emit(g_variant_new("(@aysx^as@a{sv})", g_variant_new_bytestring("/x/org.fernhop.Fernhop.desktop"),
                           "Fernhop", static_cast<gint64>(child), uris, g_variant_builder_end(&more)));
    }

    std::optional<std::string> launched() { return evidence.senderOf({.launchedPid = stub}); }

    support::TemporaryHome home;
    support::PrivateBus daemon{home};
    BusConnection bus = connectTo(daemon.address());
    BusConnection launcher = connectTo(daemon.address());
    fakes::FakeDesktopEntries entries;
    support::FakeProcesses kernel;
    Processes processes{kernel.root()};
    ApplicationMatcher matcher{entries, processes, {"org.fernhop.Fernhop", fernhopPid}};
    LaunchSignals signals{bus.get()};
    SenderEvidence evidence{matcher, processes, signals};
};

TEST_F(SenderEvidenceTest, UnknownAncestorsDoNotHaveTheEntriesReadAgain) {
    constexpr pid_t first = 600, last = 630;
    for (pid_t process = first; process <= last; ++process)
        kernel.add(process, {.parent = process + 1, .program = "/opt/unknown" + std::to_string(process)});
    for (const pid_t parent : {700, 701, 702}) {
        kernel.add(parent, {.parent = first, .program = "/opt/shell"});
        EXPECT_EQ(evidence.senderOf({.parentPid = parent}), std::nullopt);
    }
    EXPECT_EQ(entries.scans, 1);
    EXPECT_EQ(entries.checks, 3) << "once for each link";
    entries.install("org.example.fresh", "/opt/fresh");
    kernel.add(650, {.parent = first, .program = "/opt/fresh"});
    EXPECT_EQ(evidence.senderOf({.parentPid = 650}), "org.example.fresh");
}

TEST_F(SenderEvidenceTest, IsUnknownWithoutEvidence) {
    EXPECT_EQ(evidence.senderOf({}), std::nullopt);
    EXPECT_EQ(launched(), std::nullopt);
    LaunchSignals deaf(nullptr);
    EXPECT_EQ(deaf.launchOf(stub), std::nullopt);
}

TEST_F(SenderEvidenceTest, AnInheritedEntryIsTheWeakestEvidence) {
    kernel.add(400, {.program = "/usr/bin/notes"});
    LinkSender sender;
    sender.desktopFile = "org.example.mail";
    EXPECT_EQ(evidence.senderOf(sender), "org.example.mail");
    sender.desktopFile = "/usr/share/applications/org.example.mail.desktop";
    EXPECT_EQ(evidence.senderOf(sender), "org.example.mail");
    sender.parentPid = 400;
    EXPECT_EQ(evidence.senderOf(sender), "org.example.notes");
    sender.controlGroup = "/app-gnome-org.example.chat-1.scope";
    EXPECT_EQ(evidence.senderOf(sender), "org.example.chat");
    for (const std::string nonsense : {"", "not-installed", "org.fernhop.Fernhop", "/", "\xff\n"})
        EXPECT_EQ(evidence.senderOf({.desktopFile = nonsense}), std::nullopt) << nonsense;
}

TEST_F(SenderEvidenceTest, TheLaunchSignalNamesTheSender) {
    kernel.add(300, {.program = "/usr/bin/mail"});
    signalLaunch(stub, 300, "something", "/usr/share/applications/org.example.terminal.desktop");
    EXPECT_EQ(launched(), "org.example.mail") << "the process itself";
    signalLaunch(stub + 1, 301, "chat", "/usr/share/applications/org.example.terminal.desktop");
    EXPECT_EQ(evidence.senderOf({.launchedPid = stub + 1}), "org.example.chat") << "the name of its program";
    signalLaunch(stub + 2, 302, "org.example.notes", "");
    EXPECT_EQ(evidence.senderOf({.launchedPid = stub + 2}), "org.example.notes") << "its application ID";
}

TEST_F(SenderEvidenceTest, BehindALinkOpenerIsItsOrigin) {
    kernel.add(300, {.program = "/usr/bin/gio"});
    signalLaunch(stub, 300, "gio", "/usr/share/applications/org.example.chat.desktop");
    EXPECT_EQ(launched(), "org.example.chat");
}

TEST_F(SenderEvidenceTest, ASignalAboutAStubThatRunsMayBeOnItsWay) {
    kernel.add(stub, {.program = "/usr/bin/fernhop-open"});
    kernel.add(stub + 1, {.program = "/usr/bin/mail"});
    EXPECT_TRUE(evidence.isSignalPending({.launchedPid = stub}));
    for (const auto &other :
         {LinkSender{}, LinkSender{.launchedPid = stub + 1}, LinkSender{.launchedPid = 1}})
        EXPECT_FALSE(evidence.isSignalPending(other));
    signalLaunch(stub, 300, "nobody", "");
    EXPECT_FALSE(evidence.isSignalPending({.launchedPid = stub})) << "it has come";
    const LaunchSignals none(nullptr);
    EXPECT_FALSE(SenderEvidence(matcher, processes, none).isSignalPending({.launchedPid = stub}))
        << "without a bus none comes";
}

/// Links whose sender is told by a signal that comes after them, or never.
class PendingSignalTest : public SenderEvidenceTest {
  protected:
    static constexpr pid_t launcherPid = 450;

    void SetUp() override {
        SenderEvidenceTest::SetUp();
        kernel.add(launcherPid, {.program = "/usr/bin/launch"});
        for (pid_t child = stub; child < stub + 10; ++child)
            kernel.add(child, {.program = "/usr/bin/fernhop-open"});
        workspace.addObserver(didActivateApplicationNotification, [this](const Notification &notification) {
            const auto value = notification.userInfo->find(workspaceApplicationKey)->second;
            source = std::dynamic_pointer_cast<RunningApplication>(value)->bundleIdentifier();
        });
    }

    void arrive(const std::string &link, const LinkSender &sender) {
        arrivals.linkArrives(
            sender, [this, link] { handled.push_back(link + " from " + source.value_or("nobody")); });
    }
    static LinkSender launchedAs(pid_t child, pid_t parent = launcherPid) {
        return {.launchedPid = child, .parentPid = parent};
    }
    void signalFrom(const std::string &application, pid_t child) {
        emitLaunch(child, 300, "gio", "/usr/share/applications/org.example." + application + ".desktop");
    }
    [[nodiscard]] bool areHandled(const std::vector<std::string> &expected) {
        const bool came = support::runUntil([&] { return handled.size() >= expected.size(); });
        EXPECT_EQ(handled, expected);
        return came && handled == expected;
    }

    PostingNotificationCenter workspace;
    fakes::FakeFocusProvider focus;
    SourceNotifications arrivals{focus, evidence, signals, workspace};
    std::optional<std::string> source;
    std::vector<std::string> handled;
};

TEST_F(PendingSignalTest, IsWaitedForAndNamesTheSender) {
    arrive("1", launchedAs(stub));
    EXPECT_TRUE(handled.empty());
    signalFrom("chat", stub);
    EXPECT_TRUE(areHandled({"1 from org.example.chat"}));
}

TEST_F(PendingSignalTest, LeavesTheLinksOfALauncherInOrderAndDoesNotHoldUpOthers) {
    arrive("1", launchedAs(stub));
    arrive("2", {.parentPid = launcherPid, .desktopFile = "org.example.notes"});
    arrive("3", launchedAs(stub + 1));
    arrive("other", {.desktopFile = "org.example.mail"});
    EXPECT_TRUE(areHandled({"other from org.example.mail"}));
    signalFrom("chat", stub + 1);
    signalFrom("chat", stub);
    EXPECT_TRUE(areHandled({"other from org.example.mail", "1 from org.example.chat",
                            "2 from org.example.notes", "3 from org.example.chat"}));
}

TEST_F(PendingSignalTest, IsWaitedForOnceWhereNoneComes) {
    arrive("1", launchedAs(stub));
    arrive("2", launchedAs(stub + 1));
    EXPECT_TRUE(areHandled({"1 from nobody", "2 from nobody"}));
    arrive("3", launchedAs(stub + 2));
    EXPECT_EQ(handled.size(), 3U);
    arrive("4", launchedAs(stub + 3, 1));
    EXPECT_EQ(handled.size(), 3U) << "of another launcher one may come";
}

TEST_F(PendingSignalTest, IsWaitedForAgainWhenItCameLate) {
    arrive("1", launchedAs(stub));
    EXPECT_TRUE(areHandled({"1 from nobody"}));
    signalLaunch(stub, 300, "gio", "");
    arrive("2", launchedAs(stub + 1));
    EXPECT_EQ(handled.size(), 1U);
    signalFrom("chat", stub + 1);
    EXPECT_TRUE(areHandled({"1 from nobody", "2 from org.example.chat"}));
}

TEST_F(SenderEvidenceTest, LaunchesBeatUnitsAndUnitsBeatAncestors) {
    kernel.add(300, {.program = "/usr/bin/mail"});
    kernel.add(400, {.program = "/usr/bin/notes"});
    signalLaunch(stub, 300, "mail", "");
    LinkSender sender{.launchedPid = stub, .parentPid = 400, .controlGroup = "/app-org.example.chat-1.scope"};
    EXPECT_EQ(evidence.senderOf(sender), "org.example.mail");
    sender.launchedPid = stub + 1;
    EXPECT_EQ(evidence.senderOf(sender), "org.example.chat");
    sender.controlGroup = "/user.slice/session-2.scope";
    EXPECT_EQ(evidence.senderOf(sender), "org.example.notes");
}

TEST_F(SenderEvidenceTest, OnlyTheLatestLaunchesAreRemembered) {
    for (pid_t child = 1000; child < 1100; ++child)
        signalLaunch(child, 1, "mail", "");
    EXPECT_EQ(signals.launchOf(1000), std::nullopt);
    EXPECT_NE(signals.launchOf(1099), std::nullopt);
}

TEST_F(SenderEvidenceTest, HostileSignalsAreIgnored) {
    emit(g_variant_new("(s)", "nonsense"));
    emit(nullptr);
    const char *const uris[] = {nullptr};
    for (const gint64 child : {gint64{0}, gint64{-1}, G_MAXINT64})
        emit(g_variant_new("(@aysx^as@a{sv})", g_variant_new_bytestring(""), "", child, uris,
                           g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)));
    GVariantBuilder more;
    g_variant_builder_init(&more, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&more, "{sv}", "origin-pid", g_variant_new_string("five"));
    g_variant_builder_add(&more, "{sv}", "origin-prgname", g_variant_new_int32(5));
    g_variant_builder_add(&more, "{sv}", "origin-desktop-file", g_variant_new_string("mail"));
    emit(g_variant_new("(@aysx^as@a{sv})", g_variant_new_bytestring(""), "", gint64{stub}, uris,
                       g_variant_builder_end(&more)));
    ASSERT_TRUE(support::runUntil([&] { return signals.launchOf(stub).has_value(); }));
    EXPECT_EQ(signals.launchOf(stub), (ApplicationLaunch{stub, std::nullopt, "", ""}));
    EXPECT_EQ(signals.launchOf(0), std::nullopt);
    EXPECT_EQ(launched(), std::nullopt);
}

TEST_F(SenderEvidenceTest, AncestorsAreSearchedUpwards) {
    kernel.add(400,
               {.parent = 399, .program = "/usr/bin/dash", .arguments = {"sh", "/usr/bin/xdg-open", "x"}});
    kernel.add(399, {.parent = 398, .program = "/usr/bin/bash", .arguments = {"bash"}});
    kernel.add(398, {.parent = 1, .program = "/usr/bin/terminal"});
    EXPECT_EQ(evidence.senderOf({.parentPid = 400}), "org.example.terminal");
}

TEST_F(SenderEvidenceTest, AnAncestorsUnitAndInheritedEntryComeLast) {
    const std::string file = "/usr/share/applications/org.example.chat.desktop";
    kernel.add(
        400,
        {.parent = 399, .program = "/usr/bin/tool", .environment = {{"GIO_LAUNCHED_DESKTOP_FILE", file}}});
    kernel.add(399, {.parent = 1, .program = "/usr/bin/loop"});
    EXPECT_EQ(evidence.senderOf({.parentPid = 400}), "org.example.chat");
    kernel.write(399, "cgroup", "0::/app-gnome-org.example.notes-3.scope\n");
    EXPECT_EQ(evidence.senderOf({.parentPid = 400}), "org.example.notes");
}

TEST_F(SenderEvidenceTest, NeitherFernhopNorTheDesktopIsTheSource) {
    kernel.add(400, {.parent = 399, .program = "/usr/bin/plasmashell"});
    kernel.add(399, {.parent = fernhopPid, .program = "/usr/bin/tool"});
    kernel.add(fernhopPid, {.parent = 398, .program = "/usr/bin/fernhop"});
    kernel.add(398, {.parent = 1, .program = "/usr/bin/terminal"});
    EXPECT_EQ(evidence.senderOf({.parentPid = 400}), std::nullopt) << "Fernhop's own parents sent nothing";
    EXPECT_EQ(evidence.senderOf({.controlGroup = "/app-gnome-org.fernhop.Fernhop-1.scope"}), std::nullopt);
    EXPECT_FALSE(evidence.canBeSource("org.fernhop.Fernhop"));
    EXPECT_FALSE(evidence.canBeSource("org.kde.plasmashell"));
    EXPECT_FALSE(evidence.canBeSource(std::nullopt));
    EXPECT_TRUE(evidence.canBeSource("org.example.mail"));
}

TEST_F(SenderEvidenceTest, ACircleOfParentsEnds) {
    kernel.add(400, {.parent = 401, .program = "/usr/bin/a"});
    kernel.add(401, {.parent = 400, .program = "/usr/bin/b"});
    EXPECT_EQ(evidence.senderOf({.parentPid = 400}), std::nullopt);
    EXPECT_EQ(evidence.senderOf({.parentPid = -1}), std::nullopt);
    EXPECT_EQ(evidence.senderOf({.parentPid = 0}), std::nullopt);
}

TEST_F(SenderEvidenceTest, UnderstandsTheSignalsOfGio) {
    if (!support::isInstalled("gio"))
        GTEST_SKIP() << "gio is not installed";
    const std::string handler = home.root() + "/handler";
    const std::string told = home.root() + "/told";
    home.writeProgram(handler, "#!/bin/sh\necho \"$GIO_LAUNCHED_DESKTOP_FILE_PID\" > " + told + ".new\nmv " +
                                   told + ".new " + told + "\n");
    home.writeDesktopEntry("handler", "[Desktop Entry]\nType=Application\nName=Handler\nExec=" + handler +
                                          " %u\nMimeType=x-scheme-handler/https;\n");
    home.write(home.config() + "/mimeapps.list",
               "[Default Applications]\nx-scheme-handler/https=handler.desktop\n");
    support::Command command{{"gio", "open", "https://example.org/"},
                             home.environment() + daemon.environment()};
    command.environment["GIO_LAUNCHED_DESKTOP_FILE"] = "/usr/share/applications/org.example.chat.desktop";
    EXPECT_EQ(support::ChildProcess(command).wait(), 0);
    ASSERT_TRUE(support::runUntil([&] { return std::filesystem::exists(told); }));
    std::ifstream file(told);
    pid_t pid = 0;
    file >> pid;
    ASSERT_TRUE(support::runUntil([&] { return signals.launchOf(pid).has_value(); }));
    EXPECT_EQ(evidence.senderOf({.launchedPid = pid}), "org.example.chat");
}

} // namespace
} // namespace fernhop::freedesktop
