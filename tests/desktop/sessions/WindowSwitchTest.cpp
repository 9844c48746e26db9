#include "DesktopSession.h"
#include "desktop/links/BusSender.h"
#include "platform/linux/source/XTestClient.h"
#include "support/HeadlessSway.h"
#include "support/PrivateDisplay.h"

#include <gtest/gtest.h>

#include <functional>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

/// The focused application opens links in several ways.
class WindowSwitch : public testing::Test {
  protected:
    void openWithXdgOpen(const std::string &link, const support::Environment &more = {}) {
        EXPECT_EQ(session.run({"xdg-open", link}, more), 0) << session.output();
    }
    void openWithGio(const std::string &link) {
        EXPECT_EQ(session.run({"gio", "open", link}), 0) << session.output();
    }
    void openOverTheBus(const std::string &link) {
        BusSender sender(session.bus->address());
        sender.open({link});
        EXPECT_TRUE(support::runUntil([&] { return sender.answered == 1; }));
    }

    /// Opens a link in each way from Mail, from Chat, and from Mail again.
    void expectLinksToFollow(const std::function<void()> &focusMail, const std::function<void()> &focusChat) {
        focusMail();
        ASSERT_TRUE(session.sourceBecomes(DesktopSession::mail)) << session.output();
        openWithXdgOpen("https://mail/1");
        EXPECT_EQ(linksOf(session.mailBrowser, 1), Links{"https://mail/1"});

        focusChat();
        ASSERT_TRUE(session.sourceBecomes(DesktopSession::chat)) << session.output();
        // One after the other: browsers that start at the same time record their links in any order.
        openWithGio("https://chat/1");
        EXPECT_EQ(linksOf(session.chatBrowser, 1).size(), 1U);
        openOverTheBus("https://chat/2");
        EXPECT_EQ(linksOf(session.chatBrowser, 2).size(), 2U);
        openWithXdgOpen("https://chat/3");
        EXPECT_EQ(linksOf(session.chatBrowser, 3),
                  (Links{"https://chat/1", "https://chat/2", "https://chat/3"}));

        focusMail();
        ASSERT_TRUE(session.sourceBecomes(DesktopSession::mail)) << session.output();
        openWithGio("https://mail/2");
        EXPECT_EQ(linksOf(session.mailBrowser, 2).size(), 2U);
        openOverTheBus("https://mail/3");
        EXPECT_EQ(linksOf(session.mailBrowser, 3),
                  (Links{"https://mail/1", "https://mail/2", "https://mail/3"}));
        EXPECT_EQ(session.chatBrowser.links().size(), 3U);
        EXPECT_EQ(session.browser.links(), Links{}) << "no link came from elsewhere";
    }

    DesktopSession session;
};

TEST_F(WindowSwitch, DecidesOnX11) {
    if (!support::PrivateDisplay::isAvailable() || !support::isInstalled("xdg-open"))
        GTEST_SKIP() << "Xvfb, openbox or xdg-utils is not installed";
    const support::PrivateDisplay display(session.home);
    session.begin(display.environment());
    support::XTestClient windows(display.name());
    const auto mail = windows.window("org.example.mail", DesktopSession::mail);
    const auto chat = windows.window("org.example.chat", DesktopSession::chat);
    ASSERT_TRUE(support::waitUntil([&] { return windows.isManaged(mail) && windows.isManaged(chat); }));
    expectLinksToFollow([&] { windows.activate(mail); }, [&] { windows.activate(chat); });
    EXPECT_EQ(session.status()["sourceProvider"], "x11");
}

TEST_F(WindowSwitch, DecidesAboutALinkThatComesAtOnce) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const support::PrivateDisplay display(session.home);
    session.begin(display.environment());
    support::XTestClient windows(display.name());
    const auto mail = windows.window("org.example.mail", DesktopSession::mail);
    const auto chat = windows.window("org.example.chat", DesktopSession::chat);
    ASSERT_TRUE(support::waitUntil([&] { return windows.isManaged(mail) && windows.isManaged(chat); }));
    constexpr std::size_t times = 20;
    for (std::size_t time = 1; time <= times; ++time) {
        for (const auto window : {mail, chat}) {
            windows.activate(window);
            ASSERT_TRUE(support::waitUntil([&] { return windows.active() == window; }));
            openOverTheBus(window == mail ? "https://mail/" : "https://chat/");
        }
        ASSERT_EQ(linksOf(session.mailBrowser, time), Links(time, "https://mail/"));
        ASSERT_EQ(linksOf(session.chatBrowser, time), Links(time, "https://chat/"));
    }
    EXPECT_EQ(session.browser.links(), Links{}) << "no link came from elsewhere";
}

TEST_F(WindowSwitch, DecidesOnSway) {
    if (!support::HeadlessSway::isAvailable() || !support::isInstalled("foot") ||
        !support::isInstalled("xdg-open"))
        GTEST_SKIP() << "sway, foot or xdg-utils is not installed";
    const support::HeadlessSway sway;
    const auto display = sway.environment();
    // xdg-open looks at desktop entries only where DISPLAY is set, which Xwayland sets in sway.
    session.begin({{"WAYLAND_DISPLAY", display.at("WAYLAND_DISPLAY")},
                   {"XDG_SESSION_TYPE", "wayland"},
                   {"XDG_CURRENT_DESKTOP", "sway"},
                   {"DISPLAY", ":none"}});
    const auto terminal = [&](const std::string &id) {
        return sway.start({"foot", "--app-id=" + id, "cat"}, {{"LC_ALL", "C.UTF-8"}});
    };
    const auto focus = [&](const std::string &id) {
        EXPECT_TRUE(sway.command("[app_id=" + id + "] focus")) << id;
    };
    const auto mail = terminal(DesktopSession::mail);
    ASSERT_TRUE(session.sourceBecomes(DesktopSession::mail)) << session.output();
    const auto chat = terminal(DesktopSession::chat);
    ASSERT_TRUE(session.sourceBecomes(DesktopSession::chat)) << session.output();
    expectLinksToFollow([&] { focus(DesktopSession::mail); }, [&] { focus(DesktopSession::chat); });
    EXPECT_EQ(session.status()["sourceProvider"], "wlroots");
}

} // namespace
} // namespace fernhop::desktoptest
