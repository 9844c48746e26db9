#include "FakeProcesses.h"
#include "fakes/FakeDesktopEntries.h"
#include "platform/linux/source/WaylandFocusProvider.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

class WaylandWindowsTest : public testing::Test {
  protected:
    void SetUp() override {
        for (const auto *const id : {"mail", "chat", "notes"})
            entries.install(id);
        windows.front().observe([this](const auto &application) {
            seen.push_back(application->bundleIdentifier().value_or("(unknown)"));
        });
    }

    WaylandWindow &open(const std::string &appID, std::optional<pid_t> pid = {}) {
        WaylandWindow &window = windows.add();
        window.identity = {{appID}, {}, pid};
        window.isDescribed = true;
        window.activate = [this, appID] { activated.push_back(appID); };
        return window;
    }

    void focus(WaylandWindow &window) {
        if (front)
            front->isActive = false;
        front = &window;
        window.isActive = true;
        windows.settle();
    }

    fakes::FakeDesktopEntries entries;
    support::FakeProcesses kernel;
    Processes processes{kernel.root()};
    ApplicationMatcher matcher{entries, processes, {"org.fernhop.Fernhop", 7}};
    WaylandWindows windows{matcher};
    WaylandWindow *front = nullptr;
    std::vector<std::string> seen;
    std::vector<std::string> activated;
};

TEST_F(WaylandWindowsTest, TheActiveWindowIsInFront) {
    EXPECT_EQ(windows.front().current(), nullptr);
    auto &mail = open("mail");
    focus(mail);
    focus(open("chat"));
    focus(open("nobody"));
    focus(mail);
    EXPECT_EQ(seen, (std::vector<std::string>{"mail", "chat", "(unknown)", "mail"}));
}

TEST_F(WaylandWindowsTest, NothingIsInFrontWhenTheActiveWindowIsGone) {
    auto &mail = open("mail");
    focus(mail);
    mail.isClosed = true;
    windows.settle();
    EXPECT_EQ(windows.front().current(), nullptr);
    windows.removeAll();
    EXPECT_EQ(windows.front().current(), nullptr);
}

TEST_F(WaylandWindowsTest, IgnoresAWindowUntilItIsDescribed) {
    auto &window = windows.add();
    window.isActive = true;
    windows.settle();
    EXPECT_TRUE(seen.empty());
    window.identity.names = {"mail"};
    window.isDescribed = true;
    windows.settle();
    EXPECT_EQ(seen, std::vector<std::string>{"mail"});
}

TEST_F(WaylandWindowsTest, TheWindowUsedLastIsRaised) {
    auto &first = open("mail");
    auto &second = open("mail");
    second.activate = [this] { activated.push_back("second"); };
    focus(second);
    focus(first);
    focus(second);
    focus(open("chat"));
    windows.raise({"mail", std::nullopt});
    EXPECT_EQ(activated, std::vector<std::string>{"second"});
}

TEST_F(WaylandWindowsTest, AWindowIsAlsoRaisedByItsProcess) {
    open("strange", 4711);
    windows.raise({"mail", 4711});
    EXPECT_EQ(activated, std::vector<std::string>{"strange"});
}

TEST_F(WaylandWindowsTest, AWindowThatAppearsAfterwardsIsRaisedOnce) {
    focus(open("mail"));
    windows.raise({"chat", std::nullopt});
    open("notes");
    windows.settle();
    EXPECT_TRUE(activated.empty());
    open("chat");
    windows.settle();
    open("chat");
    windows.settle();
    EXPECT_EQ(activated, std::vector<std::string>{"chat"});
}

TEST_F(WaylandWindowsTest, ARaiseIsForgottenWhenTheUserFocusesAnotherWindow) {
    auto &mail = open("mail");
    auto &notes = open("notes");
    focus(notes);
    windows.raise({"chat", std::nullopt});
    focus(mail);
    open("chat");
    windows.settle();
    EXPECT_TRUE(activated.empty());
}

TEST_F(WaylandWindowsTest, ANewWindowOfAnotherApplicationDoesNotEndARaise) {
    focus(open("mail"));
    windows.raise({"chat", std::nullopt});
    focus(open("splash"));
    open("chat");
    windows.settle();
    EXPECT_EQ(activated, std::vector<std::string>{"chat"});
}

TEST_F(WaylandWindowsTest, ARaiseIsForgottenAfterSomeOtherWindows) {
    windows.raise({"chat", std::nullopt});
    for (int i = 0; i < 8; ++i)
        open("notes");
    windows.settle();
    open("chat");
    windows.settle();
    EXPECT_TRUE(activated.empty());
}

} // namespace
} // namespace fernhop::freedesktop
