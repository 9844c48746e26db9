#include "DesktopSession.h"
#include "platform/linux/source/XTestClient.h"
#include "support/HeadlessSway.h"
#include "support/PrivateDisplay.h"

#include <gtest/gtest.h>

namespace fernhop::desktoptest {
namespace {

/// A user logs out, and the bus lives on for other sessions of theirs.
class DisplayEnd : public testing::Test {
  protected:
    void expectEndWithRestore() {
        EXPECT_EQ(session.resident->wait(), 0) << session.log();
        EXPECT_EQ(session.status()["httpsHandler"], "web");
    }

    DesktopSession session;
};

TEST_F(DisplayEnd, EndsFernhopOnX11) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    support::PrivateDisplay display(session.home);
    session.begin(display.environment());
    ASSERT_TRUE(session.routeAndRestoreOnQuit()) << session.output();
    display.kill();
    expectEndWithRestore();
}

TEST_F(DisplayEnd, EndsFernhopOnSway) {
    if (!support::HeadlessSway::isAvailable())
        GTEST_SKIP() << "sway is not installed";
    support::HeadlessSway sway;
    session.begin(
        {{"WAYLAND_DISPLAY", *sway.environment().at("WAYLAND_DISPLAY")}, {"XDG_SESSION_TYPE", "wayland"}});
    ASSERT_TRUE(session.routeAndRestoreOnQuit()) << session.output();
    sway.kill();
    expectEndWithRestore();
}

TEST_F(DisplayEnd, LeavesTheNextSessionAFernhopOfItsOwn) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    support::PrivateDisplay display(session.home);
    session.begin(display.environment());
    display.kill();
    EXPECT_EQ(session.resident->wait(), 0);

    const support::PrivateDisplay next(session.home);
    session.environment = session.environment + next.environment();
    session.startFernhop();
    support::XTestClient client(next.name());
    client.window(DesktopSession::mail, "Mail");
    EXPECT_TRUE(session.sourceBecomes(DesktopSession::mail)) << session.output();
}

} // namespace
} // namespace fernhop::desktoptest
