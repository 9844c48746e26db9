#include "platform/linux/service/LinkService.h"

#include <gtest/gtest.h>

#include <optional>

namespace fernhop::freedesktop {
namespace {

class LinkDispatcherTest : public testing::Test {
  protected:
    void listen(LinkEventHandler handler) {
        dispatcher.setEventHandler(std::move(handler), getUrlEventCode, getUrlEventCode);
    }
    void listen() {
        listen([this](const LinkEventDescriptor &event, LinkEventDescriptor &) {
            happened.push_back(linkOf(event));
        });
    }
    static std::string linkOf(const LinkEventDescriptor &event) {
        const auto *object = event.paramDescriptorForKeyword(directObjectKeyword);
        return object == nullptr ? "no direct object" : object->stringValue.value_or("no text");
    }
    void deliver(std::vector<std::string> links, LinkSender sender = {}) {
        dispatcher.deliver({std::move(links), std::move(sender)}, [this](auto failed) {
            happened.emplace_back("handled");
            unopened = std::move(failed);
        });
    }

    CurrentDelivery current;
    std::vector<std::string> happened;
    std::vector<UnopenedLink> unopened;
    LinkDispatcher dispatcher{current, [this](const LinkSender &sender, const auto &handle) {
                                  happened.push_back("from " + sender.desktopFile.value_or("?"));
                                  handle();
                              }};
};

using Happened = std::vector<std::string>;

TEST_F(LinkDispatcherTest, HandsOverEachLinkAndReportsWhenAllAreHandled) {
    listen();
    LinkSender sender;
    sender.desktopFile = "chat";
    deliver({"https://b", "https://a", ""}, sender);
    EXPECT_EQ(happened, (Happened{"from chat", "https://b", "https://a", "", "handled"}));
    EXPECT_EQ(current.delivery, nullptr);
}

TEST_F(LinkDispatcherTest, AHandlerOfOtherEventsGetsNoLinks) {
    listen();
    dispatcher.setEventHandler([](const auto &, auto &) { FAIL(); }, 1, getUrlEventCode);
    dispatcher.setEventHandler([](const auto &, auto &) { FAIL(); }, getUrlEventCode, 1);
    deliver({"1"});
    EXPECT_EQ(happened, (Happened{"from ?", "1", "handled"}));
}

TEST_F(LinkDispatcherTest, IsHandledOnlyWhenTheLastLinkIsReleased) {
    std::vector<std::shared_ptr<LinkDelivery>> inHands;
    listen([&](const auto &, auto &) { inHands.push_back(current.delivery); });
    deliver({"1", "2"});
    inHands.erase(inHands.begin());
    EXPECT_EQ(happened, Happened{"from ?"});
    inHands.clear();
    EXPECT_EQ(happened, (Happened{"from ?", "handled"}));
}

TEST_F(LinkDispatcherTest, SaysWhichLinksWereNotOpenedAndWhy) {
    std::shared_ptr<LinkDelivery> taken;
    listen([&](const LinkEventDescriptor &event, auto &) {
        current.isTaken = linkOf(event).starts_with("https://taken");
        if (linkOf(event) == "https://taken/2")
            taken = current.delivery;
    });
    deliver({"https://taken/1", "no link", "https://taken/2", "https://nobody/"});
    EXPECT_TRUE(unopened.empty()) << "one is still being opened";
    taken->addUnopened({2, "broken"});
    taken.reset();
    EXPECT_EQ(unopened, (std::vector<UnopenedLink>{
                            {1, "it is not a URL"}, {3, "no browser can open it"}, {2, "broken"}}));
}

TEST_F(LinkDispatcherTest, ATextOfMegabytesIsNotLookedAt) {
    std::vector<std::string> links;
    listen([&](const LinkEventDescriptor &event, auto &) {
        links.push_back(linkOf(event));
        current.isTaken = true;
    });
    deliver({"https://a/" + std::string(2'000'000, 'x'), "https://b/"});
    EXPECT_EQ(links, std::vector<std::string>{"https://b/"});
    EXPECT_EQ(unopened, (std::vector<UnopenedLink>{{0, "it is too long"}}));
}

TEST_F(LinkDispatcherTest, TheTokensAreGoodForOneLaunch) {
    std::vector<LaunchTokens> taken;
    listen([&](const auto &, auto &) { taken.push_back(current.delivery->takeTokens()); });
    deliver({"1", "2"}, {.tokens = {"token", "id"}});
    EXPECT_EQ(taken, (std::vector<LaunchTokens>{{"token", "id"}, {}}));
}

TEST_F(LinkDispatcherTest, ALinkThatArrivesWhileAnotherIsRoutedHasADeliveryOfItsOwn) {
    std::optional<LaunchTokens> inner;
    std::optional<LaunchTokens> outer;
    listen([&](const LinkEventDescriptor &event, auto &) {
        if (linkOf(event) == "inner") {
            inner = current.delivery->takeTokens();
            return;
        }
        LinkSender second;
        second.tokens.activationToken = "second";
        deliver({"inner"}, second);
        outer = current.delivery->takeTokens();
    });
    LinkSender first;
    first.tokens.activationToken = "first";
    deliver({"outer"}, first);
    EXPECT_EQ(inner->activationToken, "second");
    EXPECT_EQ(outer->activationToken, "first");
}

} // namespace
} // namespace fernhop::freedesktop
