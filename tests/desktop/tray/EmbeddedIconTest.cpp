// Fernhop's icon in an XEmbed tray.

#include "LxqtPanel.h"
#include "ShownIcon.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <optional>

namespace fernhop::desktoptest {
namespace {

constexpr ScreenArea embeddedIcon{0, 0, 24, 24};

class EmbeddedIconTest : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = missingFor({"trayer"}); !missing.empty())
            GTEST_SKIP() << "needs " << missing;
        session.emplace();
    }

    [[nodiscard]] std::unique_ptr<support::ChildProcess>
    startTray(const std::vector<std::string> &more = {}) {
        std::vector<std::string> words = {"trayer", "--edge",        "top",     "--align",
                                          "left",   "--widthtype",   "request", "--height",
                                          "24",     "--SetDockType", "true"};
        words.insert(words.end(), more.begin(), more.end());
        return session->start(words);
    }
    [[nodiscard]] bool shows(bool expected) {
        return support::waitUntil([&] { return inkShows(*session, embeddedIcon) == expected; });
    }

    std::optional<PanelSession> session;
};

TEST_F(EmbeddedIconTest, ShowsInATrayThatWasThereFirstAndItsMenuWorks) {
    const auto tray = startTray();
    session->startFernhop();
    ASSERT_TRUE(shows(true)) << session->log();
    EXPECT_EQ(toldIconPlace(*session), "xembedTray");
    EXPECT_FALSE(hasToolkit(session->resident->pid()));
    EXPECT_EQ(session->click(12, 12), 0);
    constexpr ScreenArea menu{40, 30, 120, 100};
    ASSERT_TRUE(support::waitUntil([&] { return inkShows(*session, menu); }));
    EXPECT_TRUE(firstItemTurnsRoutingOn(*session)) << session->log();
    EXPECT_EQ(session->fernhop({"quit"}), 0);
    EXPECT_EQ(session->resident->wait(), 0) << session->log();
}

TEST_F(EmbeddedIconTest, ShowsInATrayThatComesLateAndInTheNextOne) {
    session->startFernhop();
    EXPECT_FALSE(hasToolkit(session->resident->pid()));
    auto tray = startTray();
    ASSERT_TRUE(shows(true)) << session->log();
    tray->terminate();
    EXPECT_TRUE(shows(false));
    tray = startTray();
    EXPECT_TRUE(shows(true)) << session->log();
    EXPECT_TRUE(session->resident->isRunning());
}

TEST_F(EmbeddedIconTest, ComesBackWhenItsProgramCrashes) {
    const auto tray = startTray();
    session->startFernhop();
    ASSERT_TRUE(shows(true)) << session->log();
    const std::string process = std::to_string(session->resident->pid());
    const std::string children = contentsOf("/proc/" + process + "/task/" + process + "/children");
    ASSERT_FALSE(children.empty());
    ASSERT_EQ(kill(std::stoi(children), SIGSEGV), 0);
    EXPECT_TRUE(shows(false));
    EXPECT_TRUE(shows(true)) << session->log();
    EXPECT_EQ(session->residentPid(), session->resident->pid());
}

TEST_F(EmbeddedIconTest, ShowsInABlackTray) {
    const auto tray = startTray({"--transparent", "true", "--alpha", "0", "--tint", "0x000000"});
    session->startFernhop();
    EXPECT_TRUE(support::waitUntil([&] { return lightShows(*session, embeddedIcon); })) << session->log();
}

TEST_F(EmbeddedIconTest, GivesWayToAPanelThatShowsNotifierItemsAndComesBack) {
    if (const auto missing = missingFor({"lxqt-panel"}); !missing.empty())
        GTEST_SKIP() << "needs " << missing;
    const auto tray = startTray();
    session->startFernhop();
    ASSERT_TRUE(shows(true)) << session->log();
    const auto panel = startLxqtPanel(*session, "Bottom");
    EXPECT_TRUE(shows(false)) << "there are two icons";
    constexpr ScreenArea panelIcon{0, 770, 30, 30};
    EXPECT_TRUE(support::waitUntil([&] { return inkShows(*session, panelIcon); })) << session->log();
    panel->terminate();
    EXPECT_TRUE(shows(true)) << session->log();
    EXPECT_TRUE(session->resident->isRunning());
}

} // namespace
} // namespace fernhop::desktoptest
