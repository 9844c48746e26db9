#include "platform/linux/launch/FreedesktopWorkspace.h"

#include "platform/linux/applications/InstalledDesktopEntries.h"
#include "platform/linux/source/FakeFocusProvider.h"
#include "support/MainLoop.h"
#include "support/RecordingBrowser.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

class FreedesktopWorkspaceTest : public testing::Test {
  protected:
    FreedesktopWorkspaceTest() { home.writeDesktopEntry("web", browser.desktopEntry()); }

    Url entryUrl(const std::string &id) const {
        return Url::fileUrl(home.applications() + "/" + id + ".desktop");
    }
    void open(const Url &application, OpenConfiguration configuration = {}) {
        workspace.openUrls({*Url::parse("https://a/?x=%20y")}, application, configuration,
                           [this](const auto &, const std::optional<OpenError> &error) {
                               outcomes.push_back(error ? error->localizedDescription : "opened");
                           });
    }
    std::vector<std::string> finished() {
        EXPECT_TRUE(support::runUntil([this] { return !outcomes.empty(); }));
        return outcomes;
    }

    std::vector<std::string> outcomes; // outlives the launcher, which completes what is open
    support::TemporaryHome home;
    support::RecordingBrowser browser{home, "web"};
    InstalledDesktopEntries entries{
        ApplicationPlaces{{home.applications()}, {"/usr/bin"}, {}, home.home(), {}}};
    fakes::FakeFocusProvider focus;
    Launcher launcher{LauncherServices{Environment({"PATH=/usr/bin"}), nullptr, &focus}};
    CurrentDelivery current;
    FreedesktopWorkspace workspace{entries, focus, launcher, current};
};

TEST_F(FreedesktopWorkspaceTest, RaisesTheApplicationOnlyWithActivation) {
    open(entryUrl("web"), {false});
    EXPECT_EQ(finished(), std::vector<std::string>{"opened"});
    EXPECT_TRUE(focus.raised.empty());
    open(entryUrl("web"));
    ASSERT_TRUE(support::runUntil([this] { return outcomes.size() == 2; }));
    EXPECT_EQ(focus.raised.size(), 1U);
}

TEST_F(FreedesktopWorkspaceTest, AMissingApplicationIsAnError) {
    for (const auto &url : {entryUrl("other"), *Url::parse("https://web/"), Url::fileUrl("/")}) {
        outcomes.clear();
        open(url);
        EXPECT_EQ(outcomes, std::vector<std::string>{url.absoluteString() + ": No such file or directory"});
    }
}

TEST_F(FreedesktopWorkspaceTest, TheTokensOfTheDeliveryGoToItsFirstLaunch) {
    current.delivery = std::make_shared<LinkDelivery>(LaunchTokens{"token", "startup"}, nullptr);
    open(entryUrl("web"));
    open(entryUrl("web"));
    ASSERT_TRUE(support::runUntil([this] { return outcomes.size() == 2; }));
    const auto starts = browser.starts();
    EXPECT_EQ(starts[0].environment.at("XDG_ACTIVATION_TOKEN"), "token");
    EXPECT_EQ(starts[0].environment.at("DESKTOP_STARTUP_ID"), "startup");
    EXPECT_EQ(starts[1].environment.count("XDG_ACTIVATION_TOKEN"), 0U);
}

TEST_F(FreedesktopWorkspaceTest, TheDeliveryHearsOfFailures) {
    std::optional<std::vector<UnopenedLink>> unopened;
    current = {std::make_shared<LinkDelivery>(LaunchTokens{}, [&](auto failed) { unopened = failed; }), 7};
    open(entryUrl("web"));
    EXPECT_TRUE(std::exchange(current, {}).isTaken);
    EXPECT_EQ(unopened, std::vector<UnopenedLink>{});

    home.writeDesktopEntry("broken", "[Desktop Entry]\nType=Application\nName=Broken\nExec=/nowhere/b %u\n");
    current = {std::make_shared<LinkDelivery>(LaunchTokens{}, [&](auto failed) { unopened = failed; }), 7};
    open(entryUrl("broken"));
    EXPECT_TRUE(std::exchange(current, {}).isTaken);
    EXPECT_EQ(unopened, (std::vector<UnopenedLink>{{7, "/nowhere/b: No such file or directory"}}));
}

TEST_F(FreedesktopWorkspaceTest, NobodyWaitsForABrowserThatRuns) {
    home.writeProgram(home.root() + "/dies", "#!/bin/sh\nexit 127\n");
    home.writeDesktopEntry("dies", "[Desktop Entry]\nType=Application\nName=Dies\nExec=" + home.root() +
                                       "/dies %u\n");
    std::optional<std::vector<UnopenedLink>> unopened;
    current.delivery =
        std::make_shared<LinkDelivery>(LaunchTokens{}, [&](auto failed) { unopened = failed; });
    open(entryUrl("dies"));
    current = {};
    EXPECT_EQ(unopened, std::vector<UnopenedLink>{});
    EXPECT_EQ(finished(), std::vector<std::string>{"No such file or directory"});
}

} // namespace
} // namespace fernhop::freedesktop
