#include "DialogSession.h"
#include "support/Folders.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <optional>

namespace fernhop::desktoptest {
namespace {

constexpr const char *addRuleTitle = "添加 URL 浏览器规则";

/// Dialogs on a desktop that the toolkit knows nothing of, where the settings portal tells light from dark.
class DialogAppearance : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = DialogSession::missing(); !missing.empty())
            GTEST_SKIP() << missing;
        if (!support::isInstalled("import") || !support::isInstalled("convert"))
            GTEST_SKIP() << "needs ImageMagick";
        session.emplace();
    }

    /// Starts the portal and Fernhop, and opens a dialog.
    bool openWith(const std::string &colorScheme) {
        portal.emplace(support::Command{
            {"/usr/bin/python3", support::sourceFolder() + "/tests/desktop/dialogs/portal.py", colorScheme},
            session->environment,
            session->home.root() + "/portal"});
        const bool answers = support::waitUntil([&] {
            return !portal->isRunning() || callPortal("Read", {"org.freedesktop.appearance", "color-scheme"});
        });
        session->startFernhop();
        return answers && portal->isRunning() && session->open({"add-url-rule"}, addRuleTitle);
    }

    bool callPortal(const std::string &method, const std::vector<std::string> &arguments) {
        std::vector<std::string> command{"gdbus",
                                         "call",
                                         "--session",
                                         "--dest",
                                         "org.freedesktop.portal.Desktop",
                                         "--object-path",
                                         "/org/freedesktop/portal/desktop",
                                         "--method",
                                         "org.freedesktop.portal.Settings." + method};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return session->run(command) == 0;
    }

    /// How bright the dialog is on the whole, 0 to 1; nothing when it cannot be seen.
    std::optional<double> brightness() {
        const std::string picture = session->home.root() + "/dialog.png";
        if (!session->input({"search", "--onlyvisible", "--name", addRuleTitle}))
            return std::nullopt;
        const std::string windows = session->output();
        const std::string window = windows.substr(0, windows.find('\n'));
        if (session->run({"import", "-window", window, picture}) != 0 ||
            session->run({"convert", picture, "-format", "%[fx:mean]", "info:"}) != 0)
            return std::nullopt;
        return std::stod(session->output());
    }

    bool becomesDark() {
        return support::waitUntil([this] { return brightness().value_or(1) < 0.4; });
    }
    bool becomesLight() {
        return support::waitUntil([this] { return brightness().value_or(0) > 0.7; });
    }

    std::optional<DialogSession> session;
    std::optional<support::ChildProcess> portal;
};

TEST_F(DialogAppearance, FollowsThePortalAlsoWhileADialogIsOpen) {
    ASSERT_TRUE(openWith("1"));
    EXPECT_TRUE(becomesDark());
    ASSERT_TRUE(callPortal("Change", {"2"}));
    EXPECT_TRUE(becomesLight());
    ASSERT_TRUE(callPortal("Change", {"1"}));
    EXPECT_TRUE(becomesDark());
}

TEST_F(DialogAppearance, IsTheThemesWhereThePortalSaysNothing) {
    ASSERT_TRUE(openWith("0"));
    EXPECT_TRUE(becomesLight());
}

} // namespace
} // namespace fernhop::desktoptest
