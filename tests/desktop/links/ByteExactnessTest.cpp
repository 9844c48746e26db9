#include "BusSender.h"
#include "LinkSession.h"
#include "platform/SentLink.h"
#include "platform/Url.h"
#include "support/SentLinks.h"

#include <gtest/gtest.h>

namespace fernhop::desktoptest {
namespace {

/// A text as it was opened, and as it has to arrive.
struct Case {
    const char *name;
    std::string sent;
    std::string arrives;
};

std::string repeated(const std::string &text, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index)
        result += text;
    return result;
}

std::vector<Case> corpus() {
    return {
        {"escapes that look like field codes", "https://a/%F0%f0%u%U%c3%i%k",
         "https://a/%F0%f0%25u%25U%c3%25i%25k"},
        {"percent signs", "https://a/%%?100%", "https://a/%25%25?100%25"},
        {"escapes", "https://a/%20%2F%00%25", "https://a/%20%2F%00%25"},
        {"variables", "https://a/$HOME/${HOME}?$name", "https://a/$HOME/$%7BHOME%7D?$name"},
        {"command substitution", "https://a/$(touch%20x)`id`", "https://a/$(touch%20x)%60id%60"},
        {"quotes", "https://a/'\"", "https://a/'%22"},
        {"backslashes", "https://a\\@b/?c\\", "https://a/@b/?c%5C"},
        {"shell operators", "https://a/|&;<>()!#x", "https://a/%7C&;%3C%3E()!#x"},
        {"spaces", "https://a/b c  d", "https://a/b%20c%20%20d"},
        {"non-ASCII", "https://a/\u4e16\u754c?\u00fc", "https://a/%E4%B8%96%E7%95%8C?%C3%BC"},
        {"newline and tab", " https://a/b\nc\td\r\n", "https://a/bcd"},
        {"globs", "https://a/*?[ab]~", "https://a/*?%5Bab%5D~"},
        {"other schemes", "mailto:a@b?subject=x%20y", "mailto:a@b?subject=x%20y"},
        {"100 KiB", "https://a/" + repeated("x", 100 * 1024), "https://a/" + repeated("x", 100 * 1024)},
    };
}

class ByteExactness : public testing::Test {
  protected:
    ByteExactness() {
        session.startBus();
        session.startFernhop();
    }

    LinkSession session;
};

TEST_F(ByteExactness, EachArrivesAsOneArgument) {
    std::vector<std::string> expected;
    for (const auto &entry : corpus()) {
        ASSERT_EQ(session.open({entry.sent}), 0) << entry.name;
        expected.push_back(entry.arrives);
        EXPECT_EQ(session.opened(expected.size()), expected) << entry.name;
    }
}

TEST_F(ByteExactness, SeveralInOneCallArriveInTheirOrder) {
    std::vector<std::string> sent;
    std::vector<std::string> expected;
    for (const auto &entry : corpus()) {
        sent.push_back(entry.sent);
        expected.push_back(entry.arrives);
    }
    ASSERT_EQ(session.open(sent), 0);
    EXPECT_EQ(session.opened(expected.size()), expected);
}

TEST_F(ByteExactness, BrowsersFindTheHostThatTheSentTextHas) {
    const auto sent = support::misleadingLinks(500);
    std::vector<std::string> deliverable;
    for (const auto &link : sent)
        if (const auto text = linkToDeliver(link); text && Url::parse(*text))
            deliverable.push_back(link);
    (void)session.open(sent);
    const auto opened = session.opened(deliverable.size());
    ASSERT_EQ(opened.size(), deliverable.size());
    const auto sentHosts = support::hostsByNode(deliverable);
    if (sentHosts.empty())
        GTEST_SKIP() << "Node.js is not installed";
    const auto openedHosts = support::hostsByNode(opened);
    ASSERT_EQ(sentHosts.size(), opened.size());
    ASSERT_EQ(openedHosts.size(), opened.size());
    for (std::size_t index = 0; index < opened.size(); ++index)
        EXPECT_EQ(openedHosts[index], sentHosts[index])
            << testing::PrintToString(deliverable[index]) << " became " << opened[index];
}

TEST_F(ByteExactness, TextsOfApplicationsThatCallByThemselvesLeadWhereBrowsersFindTheyLead) {
    BusSender sender(session.bus->address());
    sender.open({"https://good.example\\@evil.example/", " https://good.example/a\tb\n"});
    EXPECT_EQ(session.opened(2),
              (std::vector<std::string>{"https://good.example/@evil.example/", "https://good.example/ab"}));
}

TEST_F(ByteExactness, WhatIsNoUrlIsToldToTheSender) {
    ASSERT_EQ(session.open({"-x", "--help", "--", "", "\xff\xfe", "no scheme", "https:[::1]"}), 1);
    EXPECT_EQ(
        session.output(),
        "fernhop-open: \"https:[::1]\" was not opened: a browser would find another host in it once it is "
        "encoded.\n"
        "fernhop-open: \"-x\" was not opened: it is not a URL.\n"
        "fernhop-open: \"--help\" was not opened: it is not a URL.\n"
        "fernhop-open: \"--\" was not opened: it is not a URL.\n"
        "fernhop-open: \"\" was not opened: it is not a URL.\n"
        "fernhop-open: \"\\xFF\\xFE\" was not opened: it is not a URL.\n"
        "fernhop-open: \"no scheme\" was not opened: it is not a URL.\n");
    ASSERT_EQ(session.open({"https://after/"}), 0);
    EXPECT_EQ(session.opened(1), std::vector<std::string>{"https://after/"});
}

TEST_F(ByteExactness, BytesThatAreNoTextDoNotHideTheLinksBesideThem) {
    ASSERT_EQ(session.open({"https://1/", "https://\xff\xfe/", "https://2/"}), 0);
    // The browsers run at once: only when all have written is the order of their processes the links' order.
    const auto opened = session.opened(3);
    ASSERT_EQ(opened.size(), 3U);
    EXPECT_EQ(opened.front(), "https://1/");
    EXPECT_EQ(opened.back(), "https://2/");
}

TEST_F(ByteExactness, ALinkLongerThanAnArgumentMayBeIsDroppedWithALine) {
    // No program takes such a link as an argument, so the test sends it by itself.
    BusSender sender(session.bus->address());
    sender.open({"https://a/" + repeated("x", 200'000), "https://b/"});
    ASSERT_TRUE(support::runUntil([&] { return sender.answered == 1; }));
    EXPECT_EQ(session.opened(1), std::vector<std::string>{"https://b/"});
    EXPECT_NE(session.log().find("Fernhop: Failed to open https://a/xxx"), std::string::npos);
}

} // namespace
} // namespace fernhop::desktoptest
