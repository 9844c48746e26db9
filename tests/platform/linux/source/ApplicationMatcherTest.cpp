#include "platform/linux/source/ApplicationMatcher.h"

#include "FakeProcesses.h"
#include "fakes/FakeDesktopEntries.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

constexpr pid_t ownPid = 7;

class ApplicationMatcherTest : public testing::Test {
  protected:
    std::optional<std::string> match(std::vector<std::string> names, std::vector<std::string> ids = {},
                                     std::optional<pid_t> pid = {}) {
        return matcher.applicationOf(WindowIdentity{std::move(names), std::move(ids), pid});
    }

    fakes::FakeDesktopEntries entries;
    support::FakeProcesses kernel;
    Processes processes{kernel.root()};
    ApplicationMatcher matcher{entries, processes, {"org.fernhop.Fernhop", ownPid}};
};

TEST_F(ApplicationMatcherTest, EachKindOfEvidenceBeatsTheNext) {
    entries.install("class.of.instance", "", "instance");
    entries.install("class.of.class", "", "Class");
    entries.install("instance");
    entries.install("Class");
    entries.install("org.sandbox.App");
    entries.install("org.gtk.App");
    entries.install("by-pid", "/usr/bin/program --x");
    entries.install("org.last.Word");
    kernel.add(
        50, {.program = "/usr/lib/program", .flatpakInformation = "[Application]\nname=org.sandbox.App\n"});
    kernel.add(51, {.program = "/usr/lib/program"});

    EXPECT_EQ(match({"instance", "Class"}, {"org.gtk.App"}, 50), "class.of.instance");
    EXPECT_EQ(match({"other", "Class"}, {"org.gtk.App"}, 50), "class.of.class");
    entries.installed.erase(entries.installed.begin(), entries.installed.begin() + 2);
    ApplicationMatcher withoutClasses{entries, processes, {"org.fernhop.Fernhop", ownPid}};
    EXPECT_EQ(withoutClasses.applicationOf({{"instance", "Class"}, {"org.gtk.App"}, 50}), "instance");
    EXPECT_EQ(withoutClasses.applicationOf({{"other", "Class"}, {"org.gtk.App"}, 50}), "Class");
    EXPECT_EQ(match({"other", "Word"}, {"org.gtk.App"}, 50), "org.sandbox.App");
    EXPECT_EQ(match({"other", "Word"}, {"org.gtk.App"}, 51), "org.gtk.App");
    EXPECT_EQ(match({"other", "Word"}, {}, 51), "by-pid");
    EXPECT_EQ(match({"other", "Word"}), "org.last.Word");
    EXPECT_EQ(match({"other", "Else"}), std::nullopt);
    EXPECT_EQ(match({}), std::nullopt);
}

TEST_F(ApplicationMatcherTest, LetterCaseMattersOnlyBetweenTwoEntries) {
    entries.install("Example");
    entries.install("example");
    entries.install("one", "", "Shared");
    entries.install("two", "", "shared");
    entries.install("org.example.Some-App");
    EXPECT_EQ(match({"Example"}), "Example");
    EXPECT_EQ(match({"example"}), "example");
    EXPECT_EQ(match({"Shared"}), "one");
    EXPECT_EQ(match({"shared"}), "two");
    EXPECT_EQ(match({"org.example.some-app"}), "org.example.Some-App");
    entries.installed.clear();
    entries.install("navigator", "", "Firefox");
    ApplicationMatcher other{entries, processes, {"org.fernhop.Fernhop", ownPid}};
    EXPECT_EQ(other.applicationOf({{"FIREFOX"}, {}, {}}), "navigator");
}

TEST_F(ApplicationMatcherTest, ABlankMayStandForAHyphen) {
    entries.install("some-old-program");
    EXPECT_EQ(match({"Some Old Program"}), "some-old-program");
}

TEST_F(ApplicationMatcherTest, TheLastWordMustBeUnique) {
    entries.install("org.kde.editor");
    EXPECT_EQ(match({"Editor"}), "org.kde.editor");
    entries.install("org.gnome.Editor");
    ApplicationMatcher both{entries, processes, {"org.fernhop.Fernhop", ownPid}};
    EXPECT_EQ(both.applicationOf({{"Editor"}, {}, {}}), std::nullopt);
}

TEST_F(ApplicationMatcherTest, FernhopsOwnWindowsAreFernhop) {
    entries.install("class", "", "Fern");
    EXPECT_EQ(match({"Fern"}, {}, ownPid), "org.fernhop.Fernhop");
    EXPECT_EQ(matcher.applicationOf(ownPid), "org.fernhop.Fernhop");
}

TEST_F(ApplicationMatcherTest, PartsOfTheDesktopAreNoApplications) {
    entries.install("org.kde.plasmashell", "plasmashell");
    entries.install("xfce4-panel");
    EXPECT_EQ(match({"plasmashell", "org.kde.plasmashell"}), std::nullopt);
    EXPECT_EQ(match({"xfce4-panel", "Xfce4-panel"}), std::nullopt);
}

TEST_F(ApplicationMatcherTest, SnapsAreKnownByTheirUnit) {
    entries.install("firefox_firefox", "/snap/bin/firefox %u");
    kernel.add(
        60, {.program = "/snap/firefox/1/usr/lib/firefox/firefox-bin",
             .environment = {{"SNAP_INSTANCE_NAME", "firefox"}},
             .controlGroup = "/app.slice/snap.firefox.firefox-0f2a94c5-1111-2222-3333-444455556666.scope"});
    kernel.add(61, {.program = "/snap/x", .environment = {{"SNAP_INSTANCE_NAME", "firefox"}}});
    EXPECT_EQ(matcher.applicationOf(60), "firefox_firefox");
    EXPECT_EQ(matcher.applicationOf(61), "firefox_firefox");
}

TEST_F(ApplicationMatcherTest, AProcessBelongsToTheEntryItWasLaunchedFrom) {
    entries.install("web-app", "chromium --app=x");
    entries.install("chromium", "/usr/bin/chromium %U");
    const std::string file = "/usr/share/applications/web-app.desktop";
    kernel.add(
        70, {.program = "/usr/lib/chromium/chromium",
             .environment = {{"GIO_LAUNCHED_DESKTOP_FILE", file}, {"GIO_LAUNCHED_DESKTOP_FILE_PID", "70"}}});
    kernel.add(
        71, {.program = "/usr/lib/chromium/chromium",
             .environment = {{"GIO_LAUNCHED_DESKTOP_FILE", file}, {"GIO_LAUNCHED_DESKTOP_FILE_PID", "70"}}});
    EXPECT_EQ(matcher.applicationOf(70), "web-app");
    EXPECT_EQ(matcher.applicationOf(71), "chromium") << "an inherited variable is about another process";
}

TEST_F(ApplicationMatcherTest, PrefersThePlainestOfAProgramsEntries) {
    entries.install("office-writer", "office --writer %U");
    entries.install("office-hidden", "office %U").noDisplay = true;
    entries.install("office-start", "office %U");
    kernel.add(72, {.program = "/opt/office"});
    EXPECT_EQ(matcher.applicationOf(72), "office-start");
}

TEST_F(ApplicationMatcherTest, AScriptIsKnownByItsName) {
    entries.install("org.example.Chat", "/usr/bin/chat %u");
    kernel.add(73, {.program = "/usr/bin/python3.11", .arguments = {"python3", "/usr/bin/chat", "x"}});
    kernel.add(74, {.program = "/usr/bin/python3.11", .arguments = {"python3", "-c", "x"}});
    kernel.add(75, {.program = "/usr/bin/bash", .arguments = {"-bash"}});
    EXPECT_EQ(matcher.applicationOf(73), "org.example.Chat");
    EXPECT_EQ(matcher.applicationOf(74), std::nullopt);
    EXPECT_EQ(matcher.applicationOf(75), std::nullopt);
}

TEST_F(ApplicationMatcherTest, OpenersAndShellsAreNoApplications) {
    entries.install("a", "xdg-open https://example.org");
    entries.install("b", "sh -c \"something\"");
    entries.install("c", "python3 /usr/bin/thing");
    entries.install("d", "gio open x");
    entries.install("e", "flatpak run org.example.X");
    pid_t pid = 80;
    for (const std::string program : {"xdg-open", "sh", "python3", "gio", "flatpak", "python3.11", "bash"}) {
        kernel.add(++pid, {.program = "/usr/bin/" + program, .arguments = {program, "/usr/bin/xdg-open"}});
        EXPECT_EQ(matcher.applicationOf(pid), std::nullopt) << program;
        EXPECT_EQ(matcher.applicationRunning(program), std::nullopt) << program;
    }
}

TEST_F(ApplicationMatcherTest, TheDiskIsReadAgainOnlyForWhatIsNew) {
    entries.install("known");
    EXPECT_EQ(match({"known"}), "known");
    EXPECT_EQ(match({"known"}), "known");
    EXPECT_EQ(entries.scans, 1);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(match({"unknown"}), std::nullopt);
        EXPECT_EQ(match({"unknown" + std::to_string(i)}), std::nullopt);
        EXPECT_EQ(match({"known"}), "known");
    }
    EXPECT_EQ(entries.scans, 1) << "nothing has changed";
    entries.install("fresh");
    EXPECT_EQ(match({"fresh"}), "fresh");
    EXPECT_EQ(entries.scans, 2);
    EXPECT_EQ(match({"fresh"}), "fresh");
    EXPECT_EQ(entries.scans, 2);
}

TEST(EntryIndex, FindsTheProgramOfAnExecLine) {
    const auto runs = [](const std::string &exec, const std::string &program) {
        DesktopEntry entry;
        entry.id = "found";
        entry.exec = exec;
        return EntryIndex({entry}).byProgram(program) == "found";
    };
    EXPECT_TRUE(runs("firefox-esr %u", "firefox-esr"));
    EXPECT_TRUE(runs("\"/opt/My Editor/my editor\" --x %F", "my editor"));
    EXPECT_TRUE(runs("env GTK_THEME=dark -i /usr/bin/mail", "mail"));
    EXPECT_TRUE(runs("env -u LANG -S /usr/bin/mail", "mail"));
    EXPECT_TRUE(runs("env A=b C=d /usr/bin/mail %U", "mail"));
    EXPECT_FALSE(runs("env", "env"));
    EXPECT_FALSE(runs("\"unbalanced", "unbalanced"));
    EXPECT_FALSE(runs("", ""));
    EXPECT_FALSE(runs("xdg-open x", "xdg-open"));
    EXPECT_FALSE(runs("fernhop-open %U", "fernhop-open"));
}

TEST_F(ApplicationMatcherTest, AnApplicationIsNamedByIDFileNameOrPath) {
    entries.install("org.example.App");
    for (const std::string name :
         {"/elsewhere/org.example.App.desktop", "org.example.App.desktop", "org.example.App"})
        EXPECT_EQ(matcher.applicationNamed(name), "org.example.App") << name;
    EXPECT_EQ(matcher.applicationNamed(""), std::nullopt);
}

} // namespace
} // namespace fernhop::freedesktop
