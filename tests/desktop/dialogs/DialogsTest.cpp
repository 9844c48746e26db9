#include "../links/LinkSession.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace fernhop::desktoptest {
namespace {

/// The running Fernhop on a display of its own, whose dialogs are worked with real input.
class Dialogs : public testing::Test {
  protected:
    void SetUp() override {
        if (!support::PrivateDisplay::isAvailable() || !support::isInstalled("xdotool"))
            GTEST_SKIP() << "needs Xvfb, openbox and xdotool";
        display = std::make_unique<support::PrivateDisplay>(session.home);
        session.environment = session.environment + display->environment();
        session.startBus();
        session.startFernhop();
    }

    /// Opens a dialog and gives its window the keyboard.
    void open(const std::vector<std::string> &words, const std::string &title) {
        std::vector<std::string> command{"dialog"};
        command.insert(command.end(), words.begin(), words.end());
        ASSERT_EQ(session.fernhop(command), 0) << session.output();
        ASSERT_EQ(xdotool({"search", "--sync", "--onlyvisible", "--name", title, "windowactivate", "--sync"}),
                  0);
    }

    int xdotool(std::vector<std::string> words) {
        words.insert(words.begin(), "xdotool");
        return session.run(words);
    }

    void press(const std::string &key) { ASSERT_EQ(xdotool({"key", key}), 0); }

    /// Waits until what Fernhop tells has a text in it.
    bool tells(const std::vector<std::string> &command, const std::string &text) {
        return support::waitUntil([&] {
            (void)session.fernhop(command);
            return session.output().find(text) != std::string::npos;
        });
    }

    bool hasToolkit() const {
        std::ifstream maps("/proc/" + std::to_string(session.resident->pid()) + "/maps");
        const std::string text{std::istreambuf_iterator<char>(maps), {}};
        return text.find("libQt6Widgets") != std::string::npos;
    }

    LinkSession session;
    std::unique_ptr<support::PrivateDisplay> display;
};

TEST_F(Dialogs, URLRuleIsTypedAndSaved) {
    EXPECT_FALSE(hasToolkit());
    open({"add-url-rule"}, "添加 URL 浏览器规则");
    EXPECT_TRUE(hasToolkit());
    ASSERT_EQ(xdotool({"type", "docs.example"}), 0);
    press("Return");
    EXPECT_TRUE(tells({"url-rules", "list", "--json"}, "\"pattern\": \"docs.example\""));
}

TEST_F(Dialogs, LinksAreRoutedWhileOneIsOpen) {
    open({"feedback"}, "建议反馈");
    EXPECT_EQ(session.open({"https://one.example/"}), 0);
    EXPECT_EQ(session.opened(1), std::vector<std::string>{"https://one.example/"});
    ASSERT_EQ(xdotool({"search", "--onlyvisible", "--name", "建议反馈"}), 0);
    press("Escape");
}

TEST_F(Dialogs, EscapeWritesNothing) {
    open({"add-url-rule"}, "添加 URL 浏览器规则");
    ASSERT_EQ(xdotool({"type", "docs.example"}), 0);
    press("Escape");
    ASSERT_TRUE(support::waitUntil([&] {
        return xdotool({"search", "--onlyvisible", "--name", "添加 URL 浏览器规则"}) != 0;
    }));
    ASSERT_EQ(session.fernhop({"url-rules", "list", "--json"}), 0);
    EXPECT_EQ(session.output().find("docs.example"), std::string::npos);
}

TEST_F(Dialogs, FernhopEndsWithOneOpen) {
    open({"add-app-rules"}, "添加 App 浏览器规则");
    EXPECT_EQ(session.fernhop({"quit"}), 0);
    EXPECT_EQ(session.resident->wait(), 0);
}

} // namespace
} // namespace fernhop::desktoptest
