#include "platform/linux/source/X11FocusProvider.h"

#include "XTestClient.h"
#include "fakes/FakeDesktopEntries.h"
#include "support/MainLoop.h"
#include "support/PrivateDisplay.h"

#include <gtest/gtest.h>

#include <optional>

namespace fernhop::freedesktop {
namespace {

using support::runUntil;

class X11FocusProviderTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!support::PrivateDisplay::isAvailable())
            GTEST_SKIP() << "Xvfb or openbox is not installed";
        display.emplace(home);
        client.emplace(display->name());
        entries.install("org.example.Mail", "mail %U", "Mail");
        entries.install("org.example.Chat", "chat %u");
        entries.install("org.gtk.Notes", "notes");
    }

    void startProvider() {
        provider = X11FocusProvider::connect(display->name(), matcher);
        ASSERT_TRUE(provider);
        provider->observe([this](const auto &application) {
            seen.push_back(application->bundleIdentifier().value_or("(unknown)"));
        });
    }

    std::optional<std::string> front() const {
        const auto application = provider->frontmost();
        return application ? std::optional(application->bundleIdentifier().value_or("(unknown)"))
                           : std::nullopt;
    }

    bool frontBecomes(const std::optional<std::string> &id) {
        return runUntil([&] { return front() == id; });
    }

    /// A window of an application that Fernhop knows, in front.
    xcb_window_t showMail() {
        const auto window = client->window("mail", "Mail");
        EXPECT_TRUE(frontBecomes("org.example.Mail"));
        return window;
    }

    support::TemporaryHome home;
    std::optional<support::PrivateDisplay> display;
    std::optional<support::XTestClient> client;
    fakes::FakeDesktopEntries entries;
    Processes processes{home.root() + "/proc"};
    ApplicationMatcher matcher{entries, processes, OwnApplication{"org.fernhop.Fernhop", 0}};
    std::unique_ptr<X11FocusProvider> provider;
    std::vector<std::string> seen;
};

TEST_F(X11FocusProviderTest, IsNullWithoutADisplay) {
    EXPECT_EQ(X11FocusProvider::connect(":99999", matcher), nullptr);
    EXPECT_EQ(X11FocusProvider::connect("nonsense", matcher), nullptr);
}

TEST_F(X11FocusProviderTest, KnowsTheWindowThatWasFocusedBefore) {
    const auto window = client->window("mail", "Mail");
    ASSERT_TRUE(support::waitUntil([&] { return client->active() == window; }));
    startProvider();
    EXPECT_EQ(front(), "org.example.Mail");
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(provider->name(), "x11");
}

TEST_F(X11FocusProviderTest, FollowsTheActiveWindow) {
    startProvider();
    EXPECT_EQ(front(), std::nullopt);
    const auto mail = showMail();
    client->window("org.example.Chat", "Chat");
    ASSERT_TRUE(frontBecomes("org.example.Chat"));
    client->activate(mail);
    ASSERT_TRUE(frontBecomes("org.example.Mail"));
    EXPECT_EQ(seen, (std::vector<std::string>{"org.example.Mail", "org.example.Chat", "org.example.Mail"}));
}

TEST_F(X11FocusProviderTest, ASecondWindowOfTheSameApplicationIsNoChange) {
    startProvider();
    showMail();
    const auto second = client->window("mail", "Mail");
    ASSERT_TRUE(support::waitUntil([&] { return client->active() == second; }));
    client->window("org.example.Chat", "Chat");
    ASSERT_TRUE(frontBecomes("org.example.Chat"));
    EXPECT_EQ(seen, (std::vector<std::string>{"org.example.Mail", "org.example.Chat"}));
}

TEST_F(X11FocusProviderTest, AWindowWithoutIdentityIsAnUnknownApplication) {
    startProvider();
    showMail();
    client->show(client->window());
    ASSERT_TRUE(frontBecomes("(unknown)"));
    EXPECT_EQ(provider->frontmost()->bundleIdentifier(), std::nullopt);
}

TEST_F(X11FocusProviderTest, AWindowMaySetItsNameLate) {
    startProvider();
    const auto window = client->window();
    client->show(window);
    ASSERT_TRUE(frontBecomes("(unknown)"));
    client->setText(window, "_GTK_APPLICATION_ID", "UTF8_STRING", "org.gtk.Notes");
    EXPECT_TRUE(frontBecomes("org.gtk.Notes"));
}

TEST_F(X11FocusProviderTest, UsesTheIDsThatToolkitsSet) {
    startProvider();
    for (const auto *const property : {"_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE"}) {
        const auto window = client->window();
        client->setClass(window, "something", "Else");
        client->setText(window, property, "UTF8_STRING", "org.gtk.Notes");
        client->show(window);
        EXPECT_TRUE(frontBecomes("org.gtk.Notes")) << property;
        showMail();
    }
}

TEST_F(X11FocusProviderTest, IgnoresHostileProperties) {
    startProvider();
    showMail();
    const auto huge = client->window();
    client->setText(huge, "WM_CLASS", "STRING", std::string(100'000, 'M'));
    client->setText(huge, "_GTK_APPLICATION_ID", "UTF8_STRING", std::string(100'000, '\xff'));
    client->show(huge);
    EXPECT_TRUE(frontBecomes("(unknown)"));

    showMail();
    const auto wrongType = client->window();
    client->setNumbers(wrongType, "WM_CLASS", "CARDINAL", {0x6c69614d, 0});
    client->setNumbers(wrongType, "_GTK_APPLICATION_ID", "WINDOW", {1, 2, 3});
    client->setText(wrongType, "_NET_WM_WINDOW_TYPE", "STRING", "dock");
    client->setText(wrongType, "_NET_WM_PID", "STRING", "1");
    client->show(wrongType);
    EXPECT_TRUE(frontBecomes("(unknown)"));

    showMail();
    const auto notText = client->window();
    client->setText(notText, "WM_CLASS", "STRING", std::string_view("\xff\xfe\n\x1b[31m", 8));
    client->show(notText);
    EXPECT_TRUE(frontBecomes("(unknown)"));
    showMail();
}

TEST_F(X11FocusProviderTest, IgnoresNonsenseFromTheWindowManager) {
    startProvider();
    showMail();
    client->setText(client->root(), "_NET_ACTIVE_WINDOW", "STRING", "window");
    EXPECT_TRUE(frontBecomes(std::nullopt));
    client->setNumbers(client->root(), "_NET_ACTIVE_WINDOW", "WINDOW", {0xfffffffe});
    EXPECT_TRUE(frontBecomes("(unknown)"));
    client->setNumbers(client->root(), "_NET_ACTIVE_WINDOW", "WINDOW", {client->root()});
    EXPECT_TRUE(frontBecomes(std::nullopt));
    showMail();
}

TEST_F(X11FocusProviderTest, WindowsThatDieAtOnceDoNoHarm) {
    startProvider();
    for (int i = 0; i < 50; ++i)
        client->destroy(client->window("mail", "Mail"));
    showMail();
}

TEST_F(X11FocusProviderTest, PanelsAndTheDesktopAreNoApplications) {
    startProvider();
    for (const auto *const type : {"_NET_WM_WINDOW_TYPE_DOCK", "_NET_WM_WINDOW_TYPE_DESKTOP"}) {
        showMail();
        const auto window = client->window();
        client->setClass(window, "org.example.Chat", "Chat");
        client->setNumbers(window, "_NET_WM_WINDOW_TYPE", "ATOM", {client->atom(type)});
        client->show(window);
        ASSERT_TRUE(support::waitUntil([&] {
            client->activate(window);
            return client->active() == window;
        }));
        EXPECT_TRUE(frontBecomes(std::nullopt)) << type;
        client->destroy(window);
    }
}

TEST_F(X11FocusProviderTest, RaisesTheWindowOfAnApplication) {
    startProvider();
    const auto mail = showMail();
    client->window("org.example.Chat", "Chat");
    ASSERT_TRUE(frontBecomes("org.example.Chat"));
    EXPECT_TRUE(provider->raise({"org.example.Mail", std::nullopt}));
    EXPECT_TRUE(frontBecomes("org.example.Mail"));
    EXPECT_EQ(client->active(), mail);
}

/// A window that openbox leaves in the background, as its time of the last user action is 0.
xcb_window_t showInBackground(support::XTestClient &client, std::string_view instance,
                              std::string_view windowClass) {
    const auto window = client.window();
    client.setClass(window, instance, windowClass);
    client.setNumbers(window, "_NET_WM_USER_TIME", "CARDINAL", {0});
    client.show(window);
    return window;
}

TEST_F(X11FocusProviderTest, RaisesAWindowThatAppearsSoonAfterwards) {
    startProvider();
    showMail();
    EXPECT_TRUE(provider->raise({"org.example.Chat", std::nullopt}));
    const auto other = showInBackground(*client, "tool", "Tool");
    ASSERT_TRUE(runUntil([&] { return client->isManaged(other); }));
    const auto chat = showInBackground(*client, "org.example.Chat", "Chat");
    EXPECT_TRUE(frontBecomes("org.example.Chat"));
    EXPECT_EQ(client->active(), chat);
}

TEST_F(X11FocusProviderTest, RaisesNothingOnceTheUserHasFocusedAnotherWindow) {
    startProvider();
    const auto first = showMail();
    client->window("org.gtk.Notes", "Notes");
    ASSERT_TRUE(frontBecomes("org.gtk.Notes"));
    EXPECT_TRUE(provider->raise({"org.example.Chat", std::nullopt}));
    client->activate(first);
    ASSERT_TRUE(frontBecomes("org.example.Mail"));
    const auto chat = showInBackground(*client, "org.example.Chat", "Chat");
    ASSERT_TRUE(runUntil([&] { return client->isManaged(chat); }));
    support::runPending();
    // The window manager handles requests in order: a raise of the window would have come before this one.
    client->window("org.gtk.Notes", "Notes");
    ASSERT_TRUE(frontBecomes("org.gtk.Notes"));
    EXPECT_EQ(seen, (std::vector<std::string>{"org.example.Mail", "org.gtk.Notes", "org.example.Mail",
                                              "org.gtk.Notes"}));
}

TEST_F(X11FocusProviderTest, RecognizesFernhopsOwnWindow) {
    ApplicationMatcher ours(entries, processes, {"org.fernhop.Fernhop", getpid()});
    provider = X11FocusProvider::connect(display->name(), ours);
    // The server knows whose connection created a window, whatever the window claims.
    const auto window = client->window();
    client->setClass(window, "org.example.Chat", "Chat");
    client->setNumbers(window, "_NET_WM_PID", "CARDINAL", {1});
    client->show(window);
    EXPECT_TRUE(frontBecomes("org.fernhop.Fernhop"));
}

TEST_F(X11FocusProviderTest, FindsTheApplicationOfAWindowsProcess) {
    if (!support::isInstalled("xterm"))
        GTEST_SKIP() << "xterm is not installed";
    entries.install("debian-xterm", "xterm");
    const Processes realProcesses;
    ApplicationMatcher byProcess(entries, realProcesses, {"org.fernhop.Fernhop", 0});
    provider = X11FocusProvider::connect(display->name(), byProcess);
    const support::ChildProcess terminal({{"xterm", "-name", "a", "-class", "B", "-e", "sleep", "1000"},
                                          home.environment() + display->environment()});
    EXPECT_TRUE(frontBecomes("debian-xterm"));
}

TEST_F(X11FocusProviderTest, ReportsNothingAfterTheServerDies) {
    startProvider();
    showMail();
    const auto count = seen.size();
    int ends = 0;
    provider->onDisplayEnd([&ends] { ++ends; });
    display->kill();
    EXPECT_TRUE(frontBecomes(std::nullopt));
    EXPECT_FALSE(provider->raise({"org.example.Mail", std::nullopt}));
    support::runPending();
    EXPECT_EQ(seen.size(), count);
    EXPECT_EQ(ends, 1);
}

} // namespace
} // namespace fernhop::freedesktop
