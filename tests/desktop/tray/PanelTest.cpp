// Fernhop's icon in the trays of real panels, clicked with a real pointer.

#include "LxqtPanel.h"
#include "ShownIcon.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace fernhop::desktoptest {
namespace {

// Where the first icon of a panel is.
constexpr ScreenArea icon{0, 0, 30, 30};

TEST(XfcePanelTest, ShowsTheIconOfAFernhopThatWasThereFirst) {
    for (const auto &missing : {PanelSession::missing(), missingFor({"xfce4-panel"})})
        if (!missing.empty())
            GTEST_SKIP() << "needs " << missing;
    PanelSession session;
    session.startFernhop();
    session.startPanel();
    EXPECT_TRUE(support::waitUntil([&] { return iconShows(session, icon); }));
    EXPECT_TRUE(routingCanBeTurnedOnAt(session, icon));
    EXPECT_TRUE(session.resident->isRunning());
    // This panel is a tray for windows too.
    EXPECT_FALSE(hasToolkit(session.resident->pid()));
}

TEST(LxqtPanelTest, ShowsTheIconAndItsMenuWorks) {
    if (const auto missing = missingFor({"lxqt-panel"}); !missing.empty())
        GTEST_SKIP() << "needs " << missing;
    PanelSession session;
    const auto panel = startLxqtPanel(session, "Top");
    session.startFernhop();
    ASSERT_TRUE(support::waitUntil([&] { return iconShows(session, icon); }));
    // With its first button this panel asks an item to be activated, though it said that it is a menu.
    constexpr int menuButton = 3;
    EXPECT_TRUE(routingCanBeTurnedOnAt(session, icon, menuButton));
    EXPECT_TRUE(session.resident->isRunning());
    EXPECT_FALSE(hasToolkit(session.resident->pid()));
}

} // namespace
} // namespace fernhop::desktoptest
