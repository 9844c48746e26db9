#include "desktop/links/LinkSession.h"
#include "platform/linux/source/XTestClient.h"
#include "support/HeadlessSway.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <optional>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

/// Links of the application "mail" go to the browser "other" by a rule, all others to "web".
class Source : public testing::Test {
  protected:
    Source() {
        session.home.writeDesktopEntry("other", other.desktopEntry());
        install("mail");
        install("chat");
        session.startBus();
    }

    /// An application: a script that runs what it is given. Its windows are named by what a test wants.
    void install(const std::string &name) {
        session.home.writeProgram(programOf(name), "#!/bin/sh\n\"$@\"\nexit 0\n");
        session.home.writeDesktopEntry(name, "[Desktop Entry]\nType=Application\nName=" + name +
                                                 "\nExec=" + programOf(name) + " %u\n");
    }

    std::string programOf(const std::string &name) const { return session.home.root() + "/bin/" + name; }

    void start(const support::Environment &display) {
        session.environment = session.environment + display;
        session.startFernhop();
        ASSERT_EQ(session.fernhop({"default", "web"}), 0) << session.output();
        ASSERT_EQ(session.fernhop({"app-rules", "set", "mail", "other"}), 0) << session.output();
    }

    [[nodiscard]] bool sourceBecomes(const std::string &id) {
        return support::waitUntil([&] {
            return session.fernhop({"status", "--json"}) == 0 &&
                   session.output().find("\"source\": \"" + id + "\"") != std::string::npos;
        });
    }

    [[nodiscard]] bool opens(const support::RecordingBrowser &browser, const Links &links) const {
        return support::waitUntil([&] { return browser.links() == links; });
    }

    LinkSession session;
    support::RecordingBrowser other{session.home, "other"};
};

TEST_F(Source, FollowsTheWindowOnX11) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const support::PrivateDisplay display(session.home);
    support::XTestClient client(display.name());
    const auto mail = client.window("mail", "Mail");
    start(display.environment());
    ASSERT_TRUE(sourceBecomes("mail")) << session.output();
    session.open({"https://1/"});
    EXPECT_TRUE(opens(other, {"https://1/"}));

    client.window("chat", "Chat");
    ASSERT_TRUE(sourceBecomes("chat")) << session.output();
    session.open({"https://2/"});
    EXPECT_TRUE(opens(session.browser, {"https://2/"}));

    client.activate(mail);
    ASSERT_TRUE(sourceBecomes("mail")) << session.output();
    session.open({"https://3/"});
    EXPECT_TRUE(opens(other, {"https://1/", "https://3/"}));
}

TEST_F(Source, IsTheSenderWhereTheWindowInFrontIsUnknown) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const support::PrivateDisplay display(session.home);
    support::XTestClient client(display.name());
    start(display.environment());
    client.window("chat", "Chat");
    ASSERT_TRUE(sourceBecomes("chat")) << session.output();
    const auto unknown = client.window("nobody", "Nobody");
    ASSERT_TRUE(support::waitUntil([&] { return client.active() == unknown; }));
    // The resident hears of the window before the link: both wake one main loop, and the link comes later.
    EXPECT_TRUE(support::waitUntil([&] {
        session.run({programOf("mail"), LinkSession::program("fernhop-open"), "https://1/"});
        return !other.links().empty();
    }));
}

TEST_F(Source, IsTheSenderWithoutADisplay) {
    start({});
    session.run({programOf("mail"), LinkSession::program("fernhop-open"), "https://1/"});
    EXPECT_TRUE(opens(other, {"https://1/"}));
    EXPECT_TRUE(sourceBecomes("mail")) << session.output();
    session.run({programOf("chat"), LinkSession::program("fernhop-open"), "https://2/"});
    EXPECT_TRUE(opens(session.browser, {"https://2/"}));
    EXPECT_TRUE(sourceBecomes("chat")) << session.output();
}

TEST_F(Source, IsFoundBehindAnOpener) {
    start({});
    const support::Environment launched{
        {"GIO_LAUNCHED_DESKTOP_FILE", session.home.applications() + "/mail.desktop"}};
    ASSERT_EQ(session.run({"gio", "open", "https://1/"}, launched), 0) << session.output();
    EXPECT_TRUE(opens(other, {"https://1/"}));
}

TEST_F(Source, OfALinkFromNobodyIsUnknown) {
    start({});
    session.run({programOf("mail"), LinkSession::program("fernhop-open"), "https://1/"});
    EXPECT_TRUE(opens(other, {"https://1/"}));
    session.open({"https://2/"});
    EXPECT_TRUE(opens(session.browser, {"https://2/"})) << "the rule of another link's sender is not for it";
}

TEST_F(Source, IsKnownWithoutABus) {
    start({});
    const support::Environment noBus{{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere"}};
    session.run({programOf("mail"), LinkSession::program("fernhop-open"), "https://1/"}, noBus);
    EXPECT_TRUE(opens(other, {"https://1/"})) << session.output();
}

TEST_F(Source, IsTheSenderAfterTheEndOfTheDisplay) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    support::PrivateDisplay display(session.home);
    start(display.environment());
    display.kill();
    session.run({programOf("mail"), LinkSession::program("fernhop-open"), "https://1/"});
    EXPECT_TRUE(opens(other, {"https://1/"})) << session.output();
    session.killResident(SIGTERM); // it was started for the link
}

TEST_F(Source, FollowsTheWindowOnSway) {
    if (!support::HeadlessSway::isAvailable() || !support::isInstalled("foot"))
        GTEST_SKIP() << "sway or foot is not installed";
    const support::HeadlessSway sway;
    const auto mail = sway.start({"foot", "--app-id=mail", "sleep", "1000"});
    start({{"WAYLAND_DISPLAY", *sway.environment().at("WAYLAND_DISPLAY")}, {"XDG_SESSION_TYPE", "wayland"}});
    ASSERT_TRUE(sourceBecomes("mail")) << session.output();
    session.open({"https://1/"});
    EXPECT_TRUE(opens(other, {"https://1/"}));
    const auto chat = sway.start({"foot", "--app-id=chat", "sleep", "1000"});
    ASSERT_TRUE(sourceBecomes("chat")) << session.output();
    session.open({"https://2/"});
    EXPECT_TRUE(opens(session.browser, {"https://2/"}));
    ASSERT_TRUE(sway.command("[app_id=mail] focus"));
    ASSERT_TRUE(sourceBecomes("mail")) << session.output();
}

} // namespace
} // namespace fernhop::desktoptest
