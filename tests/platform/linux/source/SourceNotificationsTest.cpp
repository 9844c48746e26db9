#include "platform/linux/source/SourceNotifications.h"

#include "FakeFocusProvider.h"
#include "FakeProcesses.h"
#include "fakes/FakeDesktopEntries.h"
#include "platform/linux/source/FocusProvider.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

/// Follows the source as the controller does: by notifications of applications that have an identifier.
class SourceNotificationsTest : public testing::Test {
  protected:
    void SetUp() override {
        entries.install("mail");
        entries.install("chat");
        entries.install("org.kde.plasmashell");
        workspace.addObserver(didActivateApplicationNotification, [this](const Notification &notification) {
            const auto value = notification.userInfo->find(workspaceApplicationKey)->second;
            const auto application = std::dynamic_pointer_cast<RunningApplication>(value);
            ASSERT_TRUE(application);
            ++posts;
            if (const auto id = application->bundleIdentifier(); id && *id != "org.fernhop.Fernhop")
                source = application;
        });
    }

    std::string sourceID() const {
        return source ? source->bundleIdentifier().value_or("(unknown)") : "(none)";
    }

    static void arrive(SourceNotifications &notifications, const LinkSender &sender) {
        bool isHandled = false;
        notifications.linkArrives(sender, [&] { isHandled = true; });
        EXPECT_TRUE(isHandled);
    }
    static LinkSender from(const std::string &id) { return {.desktopFile = id}; }

    fakes::FakeDesktopEntries entries;
    support::FakeProcesses kernel;
    Processes processes{kernel.root()};
    ApplicationMatcher matcher{entries, processes, {"org.fernhop.Fernhop", 7}};
    LaunchSignals signals{nullptr};
    SenderEvidence evidence{matcher, processes, signals};
    PostingNotificationCenter workspace;
    fakes::FakeFocusProvider focus;
    SourceNotifications tracker{focus, evidence, signals, workspace};
    std::shared_ptr<RunningApplication> source;
    int posts = 0;
};

TEST_F(SourceNotificationsTest, FocusIsTheSource) {
    focus.activate("mail");
    EXPECT_EQ(sourceID(), "mail");
    focus.activate("chat");
    EXPECT_EQ(sourceID(), "chat");
    EXPECT_EQ(posts, 2);
}

TEST_F(SourceNotificationsTest, FocusBeatsTheSender) {
    focus.activate("mail");
    arrive(tracker, from("chat"));
    EXPECT_EQ(sourceID(), "mail");
    EXPECT_EQ(posts, 1);
}

TEST_F(SourceNotificationsTest, UsesTheSenderWhereTheFocusedApplicationIsNoSource) {
    const std::vector<std::optional<std::string>> useless{std::nullopt, "org.fernhop.Fernhop",
                                                          "org.kde.plasmashell"};
    for (const auto &front : useless) {
        focus.activate("mail");
        focus.activate(front);
        arrive(tracker, from("chat"));
        EXPECT_EQ(sourceID(), "chat") << front.value_or("(unknown)");
    }
    focus.front = nullptr;
    arrive(tracker, from("mail"));
    EXPECT_EQ(sourceID(), "mail");
}

TEST_F(SourceNotificationsTest, FernhopInFrontDoesNotChangeTheSource) {
    focus.activate("mail");
    focus.activate("org.fernhop.Fernhop");
    arrive(tracker, {});
    EXPECT_EQ(sourceID(), "mail");
}

TEST_F(SourceNotificationsTest, FocusTakesOverAgainAfterASender) {
    focus.activate("mail");
    focus.activate(std::nullopt);
    arrive(tracker, from("chat"));
    focus.activate("mail");
    arrive(tracker, {});
    EXPECT_EQ(sourceID(), "mail");
}

TEST_F(SourceNotificationsTest, WithoutFocusTheSourceIsTheSenderOfTheLastLink) {
    const auto none = makeFocusProvider({}, nullptr);
    SourceNotifications blind(*none, evidence, signals, workspace);
    EXPECT_EQ(none->name(), "link sender");
    EXPECT_EQ(none->frontmost(), nullptr);
    EXPECT_FALSE(none->raise({"mail", std::nullopt}));
    arrive(blind, from("mail"));
    EXPECT_EQ(sourceID(), "mail");
    arrive(blind, from("chat"));
    EXPECT_EQ(sourceID(), "chat");
    arrive(blind, {});
    EXPECT_EQ(sourceID(), "(unknown)") << "the sender of another link is not its source";
    arrive(blind, from("org.fernhop.Fernhop"));
    EXPECT_EQ(sourceID(), "(unknown)");
    arrive(blind, from("mail"));
    EXPECT_EQ(sourceID(), "mail");
}

TEST(PostingNotificationCenter, ObserversAreCalledInOrderAndMayAddOthers) {
    PostingNotificationCenter center;
    std::string calls;
    center.addObserver("a", [&](const Notification &) {
        calls += '1';
        center.addObserver("a", [&](const Notification &) { calls += '3'; });
    });
    center.addObserver("b", [&](const Notification &) { calls += 'x'; });
    center.addObserver("a", [&](const Notification &) { calls += '2'; });
    center.post({"a", std::nullopt});
    EXPECT_EQ(calls, "12");
    center.post({"a", std::nullopt});
    EXPECT_EQ(calls, "12123");
    center.post({"c", std::nullopt});
    EXPECT_EQ(calls, "12123");
}

} // namespace
} // namespace fernhop::freedesktop
