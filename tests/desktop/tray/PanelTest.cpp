// Fernhop's icon in the trays of real panels, clicked with a real pointer.

#include "LxqtPanel.h"
#include "ShownIcon.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace fernhop::desktoptest {
namespace {

TEST(XfcePanelTest, ShowsTheIconOfAFernhopThatWasThereFirst) {
    for (const auto &missing : {PanelSession::missing(), missingFor({"xfce4-panel"})})
        if (!missing.empty())
            GTEST_SKIP() << "needs " << missing;
    PanelSession session;
    session.startFernhop();
    EXPECT_EQ(toldIconPlace(session), "");
    session.startPanel();
    EXPECT_TRUE(support::waitUntil([&] { return inkShows(session, firstIcon); }));
    EXPECT_EQ(toldIconPlace(session), "panel");
    EXPECT_TRUE(routingCanBeTurnedOnAt(session, firstIcon));
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
    ASSERT_TRUE(support::waitUntil([&] { return inkShows(session, firstIcon); }));
    // With its first button this panel asks an item to be activated, though it said that it is a menu.
    constexpr int menuButton = 3;
    EXPECT_TRUE(routingCanBeTurnedOnAt(session, firstIcon, menuButton));
    EXPECT_TRUE(session.resident->isRunning());
    EXPECT_FALSE(hasToolkit(session.resident->pid()));
}

} // namespace
} // namespace fernhop::desktoptest
