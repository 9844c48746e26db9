// Fernhop's icon in the tray of a real panel, clicked with a real pointer.

#include "PanelSession.h"
#include "TrayMenu.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace fernhop::desktoptest {
namespace {

class PanelTest : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = PanelSession::missing(); !missing.empty())
            GTEST_SKIP() << "needs " << missing;
        if (!support::isInstalled("import"))
            GTEST_SKIP() << "needs import";
        session.emplace();
    }

    /// Whether ink of the icon shows at the left end of the panel, where its only plug-in is.
    [[nodiscard]] bool iconShows() {
        const std::string file = session->home.root() + "/screen.gray";
        if (session->run({"import", "-window", "root", "-crop", "30x30+0+0", "-depth", "8", file}) != 0)
            return false;
        const auto pixels = contentsOf(file);
        const auto count = [&](auto test) { return std::count_if(pixels.begin(), pixels.end(), test); };
        const auto dark = count([](char pixel) { return static_cast<unsigned char>(pixel) < 64; });
        const auto light = count([](char pixel) { return static_cast<unsigned char>(pixel) > 192; });
        return dark > 30 && light > 300;
    }

    std::optional<PanelSession> session;
};

TEST_F(PanelTest, ShowsTheIconOfAFernhopThatWasThereFirst) {
    session->startFernhop();
    session->startPanel();
    EXPECT_TRUE(support::waitUntil([this] { return iconShows(); }));
    EXPECT_TRUE(session->resident->isRunning());
}

} // namespace
} // namespace fernhop::desktoptest
