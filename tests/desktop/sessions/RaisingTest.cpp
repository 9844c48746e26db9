#include "DesktopSession.h"
#include "platform/linux/source/XTestClient.h"
#include "support/HeadlessSway.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <optional>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

class RaisingOnX11 : public testing::Test {
  protected:
    void SetUp() override {
        if (!support::PrivateDisplay::isAvailable())
            GTEST_SKIP() << "Xvfb or openbox is not installed";
        display.emplace(session.home);
        session.begin(display->environment());
        windows.emplace(display->name());
    }

    void showChat() {
        windows->window("org.example.chat", DesktopSession::chat);
        ASSERT_TRUE(session.sourceBecomes(DesktopSession::chat)) << session.output();
    }

    bool inFront(xcb_window_t window) {
        return support::waitUntil([&] { return windows->active() == window; });
    }

    DesktopSession session;
    std::optional<support::PrivateDisplay> display;
    std::optional<support::XTestClient> windows;
};

// As with a browser that hands its links over to its first process.
TEST_F(RaisingOnX11, TheBrowsersWindowComesToTheFront) {
    const auto browser = windows->window("web-for-chat", "web-for-chat");
    ASSERT_TRUE(inFront(browser));
    showChat();
    ASSERT_EQ(session.open({"https://chat/"}), 0) << session.output();
    EXPECT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"});
    EXPECT_TRUE(inFront(browser));
}

TEST_F(RaisingOnX11, AWindowThatOpensLaterInTheBackgroundComesToTheFront) {
    showChat();
    ASSERT_EQ(session.open({"https://chat/"}), 0) << session.output();
    ASSERT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"});
    const auto browser = windows->window();
    windows->setClass(browser, "web-for-chat", "web-for-chat");
    windows->setNumbers(browser, "_NET_WM_USER_TIME", "CARDINAL", {0});
    windows->show(browser);
    EXPECT_TRUE(inFront(browser));
}

TEST_F(RaisingOnX11, TheBrowserIsAnnouncedToTheWindowManager) {
    session.home.writeDesktopEntry("web-for-chat", session.chatBrowser.desktopEntry("StartupNotify=true\n"));
    showChat();
    ASSERT_EQ(session.open({"https://chat/"}), 0) << session.output();
    ASSERT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"});
    const auto environment = session.chatBrowser.starts().front().environment;
    ASSERT_EQ(environment.count("DESKTOP_STARTUP_ID"), 1U);
    EXPECT_EQ(environment.at("DESKTOP_STARTUP_ID").rfind("fernhop-", 0), 0U);
}

TEST(RaisingOnSway, TheBrowsersWindowComesToTheFront) {
    if (!support::HeadlessSway::isAvailable() || !support::isInstalled("foot"))
        GTEST_SKIP() << "sway or foot is not installed";
    const support::HeadlessSway sway;
    DesktopSession session;
    session.begin({{"WAYLAND_DISPLAY", sway.environment().at("WAYLAND_DISPLAY")},
                   {"XDG_SESSION_TYPE", "wayland"},
                   {"XDG_CURRENT_DESKTOP", "sway"}});
    const auto show = [&](const std::string &id) {
        auto window = sway.start({"foot", "--app-id=" + id, "cat"}, {{"LC_ALL", "C.UTF-8"}});
        EXPECT_TRUE(session.sourceBecomes(id)) << session.output();
        return window;
    };
    const auto browser = show("web-for-chat");
    const auto chat = show(DesktopSession::chat);
    ASSERT_EQ(session.open({"https://chat/"}), 0) << session.output();
    EXPECT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"});
    EXPECT_TRUE(session.sourceBecomes("web-for-chat")) << session.output();
}

} // namespace
} // namespace fernhop::desktoptest
