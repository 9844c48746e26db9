#include "routing/LinkIntake.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using Links = std::vector<std::string>;

class LinkIntakeTest : public testing::Test {
  protected:
    Links routed;
    std::function<void()> atRoute = [] {}; ///< called after each link
    LinkIntake intake{[this](const Url &url) {
        routed.push_back(url.absoluteString());
        atRoute();
    }};

    void arrive(const std::string &link) { intake.enqueueURLForRouting(Url::parse(link).value()); }
};

TEST_F(LinkIntakeTest, QueuesLinksIncludingDuplicates) {
    arrive("https://one.example/");
    arrive("https://one.example/");
    EXPECT_EQ(intake.pendingURLs().size(), 2U);
    EXPECT_TRUE(routed.empty());
    intake.processPendingURLs();
    EXPECT_EQ(routed, (Links{"https://one.example/", "https://one.example/"}));
    EXPECT_TRUE(intake.pendingURLs().empty());
}

TEST_F(LinkIntakeTest, TakesTheTextAsItStands) {
    intake.finishLaunching();
    for (const char *text : {" https://one.example/", "\thttps://one.example/", "\nhttps://one.example/"})
        intake.handleGetURLEvent(LinkEventDescriptor::getUrl(text));
    EXPECT_EQ(routed, Links{}) << "a scheme begins with a letter";
    for (const char *text : {"https://two.example/ ", "https://two.example/\t", "https://two.example/\r\n"})
        intake.handleGetURLEvent(LinkEventDescriptor::getUrl(text));
    EXPECT_EQ(routed,
              (Links{"https://two.example/%20", "https://two.example/%09", "https://two.example/%0D%0A"}));
}

TEST_F(LinkIntakeTest, FinishingTheLaunchAloneRoutesNothing) {
    arrive("https://one.example/");
    intake.finishLaunching();
    EXPECT_TRUE(routed.empty());
    arrive("https://two.example/");
    EXPECT_EQ(routed, Links{"https://two.example/"});
    EXPECT_EQ(intake.pendingURLs().size(), 1U);
}

TEST_F(LinkIntakeTest, ListIsEmptyBeforeTheFirstLinkIsRouted) {
    arrive("https://one.example/");
    arrive("https://two.example/");
    atRoute = [this] { EXPECT_TRUE(intake.pendingURLs().empty()); };
    intake.processPendingURLs();
    EXPECT_EQ(routed.size(), 2U);
}

TEST_F(LinkIntakeTest, LinkThatArrivesWhileOthersAreRoutedIsQueued) {
    for (int link = 0; link < 100; ++link)
        arrive("https://old.example/");
    atRoute = [this] { arrive("https://new.example/"); };
    intake.processPendingURLs();
    EXPECT_EQ(routed, Links(100, "https://old.example/"));
    EXPECT_EQ(intake.pendingURLs(), std::vector(100, Url::parse("https://new.example/").value()));
}

TEST_F(LinkIntakeTest, LinkThatArrivesWhileOthersAreRoutedAfterLaunchIsRoutedAtOnce) {
    arrive("https://one.example/");
    arrive("https://two.example/");
    intake.finishLaunching();
    atRoute = [this] {
        if (routed.size() == 1)
            arrive("https://new.example/");
    };
    intake.processPendingURLs();
    EXPECT_EQ(routed, (Links{"https://one.example/", "https://new.example/", "https://two.example/"}));
}

} // namespace
} // namespace fernhop
