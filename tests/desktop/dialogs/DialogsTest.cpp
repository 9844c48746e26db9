#include "DialogSession.h"
#include "platform/linux/source/XTestClient.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <optional>

namespace fernhop::desktoptest {
namespace {

/// The running Fernhop on a display of its own, with a dialog open.
class Dialogs : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = DialogSession::missing(); !missing.empty())
            GTEST_SKIP() << missing;
        session.emplace();
    }

    bool hasToolkit() const {
        std::ifstream maps("/proc/" + std::to_string(session->resident->pid()) + "/maps");
        const std::string text{std::istreambuf_iterator<char>(maps), {}};
        return text.find("libQt6Widgets") != std::string::npos;
    }

    /// A measure of the dialog's window, by its name in what xdotool tells.
    int measure(const std::string &title, const std::string &name) {
        EXPECT_TRUE(
            session->input({"search", "--onlyvisible", "--name", title, "getwindowgeometry", "--shell"}));
        const std::string told = session->output();
        const auto place = told.find(name + "=");
        return place == std::string::npos ? 0 : std::stoi(told.substr(place + name.size() + 1));
    }

    std::optional<DialogSession> session;
};

TEST_F(Dialogs, ToolkitIsLoadedWithTheFirstOne) {
    session->startFernhop();
    EXPECT_FALSE(hasToolkit());
    ASSERT_TRUE(session->open({"add-url-rule"}, "添加 URL 浏览器规则"));
    EXPECT_TRUE(hasToolkit());
    ASSERT_TRUE(session->type("docs.example"));
    ASSERT_TRUE(session->press({"Return"}));
    EXPECT_TRUE(session->tells({"url-rules", "list", "--json"}, "\"pattern\": \"docs.example\""));
}

TEST_F(Dialogs, LinksAreRoutedWhileOneIsOpen) {
    session->startFernhop();
    ASSERT_EQ(session->fernhop({"default", "web"}), 0);
    ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
    EXPECT_EQ(session->LinkSession::open({"https://one.example/"}), 0);
    EXPECT_EQ(session->opened(1), std::vector<std::string>{"https://one.example/"});
    EXPECT_TRUE(session->shows("建议反馈"));
    ASSERT_TRUE(session->press({"Escape"}));
    EXPECT_TRUE(session->closes("建议反馈"));
}

TEST_F(Dialogs, SecondOneBringsTheOpenOneToTheFront) {
    session->startFernhop();
    ASSERT_TRUE(session->open({"add-url-rule"}, "添加 URL 浏览器规则"));
    support::XTestClient client(session->display->name());
    const auto dialog = client.active();
    const auto another = client.window("another", "Another");
    ASSERT_TRUE(support::waitUntil([&] { return client.isManaged(another); }));
    client.activate(another);
    ASSERT_TRUE(support::waitUntil([&] { return client.active() == another; }));
    EXPECT_EQ(session->fernhop({"dialog", "feedback"}), 0);
    EXPECT_TRUE(support::waitUntil([&] { return client.active() == dialog; }));
    EXPECT_FALSE(session->shows("建议反馈"));
    ASSERT_TRUE(session->type("still.the.same") && session->press({"Return"}));
    EXPECT_TRUE(session->tells({"url-rules", "list"}, "still.the.same"));
}

TEST_F(Dialogs, NextOneOpensAfterTheFirstIsClosed) {
    session->startFernhop();
    for (int time = 0; time < 3; ++time) {
        ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
        ASSERT_TRUE(session->press({"Return"}));
        ASSERT_TRUE(session->closes("建议反馈"));
    }
}

TEST_F(Dialogs, FernhopEndsWithOneOpen) {
    session->startFernhop();
    ASSERT_TRUE(session->open({"add-app-rules"}, "添加 App 浏览器规则"));
    EXPECT_EQ(session->fernhop({"quit"}), 0);
    EXPECT_EQ(session->resident->wait(), 0);
}

TEST_F(Dialogs, FernhopEndsInOrderWithItsDisplay) {
    for (const bool isOpen : {true, false}) {
        session.emplace();
        session->startFernhop();
        ASSERT_TRUE(session->routeAndRestoreOnQuit()) << session->output();
        ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
        if (!isOpen) {
            ASSERT_TRUE(session->press({"Escape"}));
            ASSERT_TRUE(session->closes("建议反馈"));
        }
        session->display->kill();
        EXPECT_EQ(session->resident->wait(), 0) << session->log();
        EXPECT_TRUE(session->tells({"status", "--json"}, "\"httpsHandler\": \"web\"")) << session->output();
    }
}

TEST_F(Dialogs, DenserScreensShowThemAsLarge) {
    if (!support::isInstalled("xprop"))
        GTEST_SKIP() << "xprop is not installed";
    session->startFernhop();
    ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
    const int width = measure("建议反馈", "WIDTH"), height = measure("建议反馈", "HEIGHT");
    EXPECT_GE(width, 440);
    EXPECT_GE(height, 250);
    ASSERT_EQ(session->fernhop({"quit"}), 0);
    session->resident->wait();
    // As desktops set their scale; the toolkit wants the tab.
    ASSERT_EQ(session->run({"xprop", "-root", "-f", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER",
                            "Xft.dpi:\t192"}),
              0);
    session->startFernhop();
    ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
    EXPECT_NEAR(measure("建议反馈", "WIDTH"), 2 * width, 4);
    EXPECT_NEAR(measure("建议反馈", "HEIGHT"), 2 * height, 8);
}

} // namespace
} // namespace fernhop::desktoptest
