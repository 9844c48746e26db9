#include "desktop/links/LinkSession.h"
#include "platform/linux/tray/TrayHost.h"
#include "support/HeadlessSway.h"
#include "support/Waiting.h"

#include <glob.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace fernhop::desktoptest {
namespace {

bool hasWaylandPlugin() {
    glob_t found{};
    const bool any =
        glob("/usr/lib*/*/qt6/plugins/platforms/libqwayland-generic.so", 0, nullptr, &found) == 0 ||
        glob("/usr/lib*/qt6/plugins/platforms/libqwayland-generic.so", 0, nullptr, &found) == 0;
    globfree(&found);
    return any;
}

/// Dialogs in a session that has no X display.
class WaylandDialogs : public testing::Test {
  protected:
    void SetUp() override {
        if (!support::HeadlessSway::isAvailable() || !hasWaylandPlugin() || !support::isInstalled("foot"))
            GTEST_SKIP() << "needs sway, foot and qt6-wayland";
        sway = std::make_unique<support::HeadlessSway>();
        session.environment["WAYLAND_DISPLAY"] = sway->environment().at("WAYLAND_DISPLAY");
        session.environment["XDG_SESSION_TYPE"] = "wayland";
        session.environment["WAYLAND_DEBUG"] = "client"; // the calls to the compositor go to the log
        session.startBus();
        session.startFernhop();
        ASSERT_EQ(session.fernhop({"default", "web"}), 0) << session.output();
    }

    bool comes(const std::string &windows) const {
        return support::waitUntil([&] { return sway->command("[" + windows + "] nop"); });
    }
    bool goes(const std::string &windows) const {
        return support::waitUntil([&] { return !sway->command("[" + windows + "] nop"); });
    }

    /// Opens the dialog and takes the focus away from it; nothing has asked for it to come back so far.
    void openBehindAnotherWindow() {
        ASSERT_EQ(session.fernhop({"dialog", "feedback"}), 0) << session.output();
        ASSERT_TRUE(comes(focused + dialog)) << session.log();
        foot = sway->start({"foot", "--app-id=foot", "sleep", "1000"});
        ASSERT_TRUE(comes(focused + "app_id=foot"));
        EXPECT_EQ(session.log().find(".activate("), std::string::npos)
            << "without a token nothing is asked for";
    }
    /// Whether the dialog asks the compositor, with this token, to come to the front.
    bool activatesWith(const std::string &token) {
        return support::waitUntil(
            [&] { return session.log().find(".activate(\"" + token + "\"") != std::string::npos; });
    }

    LinkSession session;
    std::unique_ptr<support::HeadlessSway> sway;
    std::unique_ptr<support::ChildProcess> foot;
    const std::string dialog = "app_id=\"^org.fernhop.Fernhop$\"", focused = "con_id=__focused__ ";
};

TEST_F(WaylandDialogs, ShowsAndRoutesLinksMeanwhile) {
    ASSERT_EQ(session.fernhop({"dialog", "add-url-rule"}), 0) << session.output();
    ASSERT_TRUE(comes(dialog + " title=\"^添加 URL 浏览器规则$\"")) << session.log();
    EXPECT_EQ(session.open({"https://one.example/"}), 0);
    EXPECT_EQ(session.opened(1), std::vector<std::string>{"https://one.example/"});
    ASSERT_TRUE(sway->command("[" + dialog + "] kill"));
    ASSERT_TRUE(goes(dialog));
    ASSERT_EQ(session.fernhop({"url-rules", "list", "--json"}), 0);
    EXPECT_EQ(session.output(), "[]\n");
}

TEST_F(WaylandDialogs, UsesTheTokenOfTheCommand) {
    ASSERT_NO_FATAL_FAILURE(openBehindAnotherWindow());
    const support::Environment token{{"XDG_ACTIVATION_TOKEN", "token-of-the-command"}};
    ASSERT_EQ(session.run({session.program("fernhop"), "dialog", "feedback"}, token), 0);
    EXPECT_TRUE(activatesWith("token-of-the-command")) << session.log();
}

TEST_F(WaylandDialogs, UsesTheTokenOfAClickInTheTray) {
    ASSERT_NO_FATAL_FAILURE(openBehindAnotherWindow());
    freedesktop::Host tray(session.bus->address(), "org.fernhop.Fernhop");
    const freedesktop::LayoutItem menu(tray.layout().first.get());
    const auto feedback = std::ranges::find(menu.children, "建议反馈", &freedesktop::LayoutItem::label);
    ASSERT_NE(feedback, menu.children.end());
    ASSERT_TRUE(tray.call("org.fernhop.Fernhop", "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                          "ProvideXdgActivationToken", g_variant_new("(s)", "token-of-the-click"))
                    .value);
    ASSERT_TRUE(
        tray.menuCall("Event", "(" + std::to_string(feedback->id) + ", 'clicked', <0>, uint32 0)").value);
    EXPECT_TRUE(activatesWith("token-of-the-click")) << session.log();
}

} // namespace
} // namespace fernhop::desktoptest
