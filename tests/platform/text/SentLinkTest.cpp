#include "platform/SentLink.h"

#include "platform/Url.h"
#include "support/SentLinks.h"

#include <gtest/gtest.h>

namespace fernhop {

namespace {

using namespace std::string_view_literals;

std::string delivered(std::string_view sent) {
    return linkToDeliver(sent).value_or("refused");
}

} // namespace

TEST(SentLink, KeepsAValidUri) {
    for (const std::string_view text :
         {"https://docs.example/a%5Cb?x=1#y", "https://good.example%5C@evil.example/", "https:good.example",
          "http:///good.example/", "https://user@[::1]:80/", "mailto:a@b?subject=x%20y", "x:", ""})
        EXPECT_EQ(delivered(text), text);
}

TEST(SentLink, LosesWhatTheUrlStandardRemoves) {
    EXPECT_EQ(delivered("\0\x1F https://a/b c \t\r\n"sv), "https://a/b c");
    EXPECT_EQ(delivered("ht\ttps://a\r\n/b\n?c\td#e\nf"), "https://a/b?cd#ef");
    EXPECT_EQ(delivered(" \n "), "");
    EXPECT_EQ(delivered("\x7Fhttps://a/\x7F"), "\x7Fhttps://a/\x7F");
}

TEST(SentLink, ReadsABackslashBeforeTheQueryAsASlashInWebLinks) {
    EXPECT_EQ(delivered("HTTPS:\\\\a\\@b\\c?d\\e#f\\g"), "HTTPS://a/@b/c?d\\e#f\\g");
    EXPECT_EQ(delivered("http://a#b\\c"), "http://a#b\\c");
    EXPECT_EQ(delivered("mailto:a\\b"), "mailto:a\\b");
    EXPECT_EQ(delivered("file:///a\\b"), "file:///a\\b");
    EXPECT_EQ(delivered("a\\b"), "a\\b");
}

TEST(SentLink, IsRefusedWhereEncodingItWouldChangeItsHost) {
    // To a browser the host is an address; in the URI it is in the path, where brackets have to be encoded.
    for (const std::string_view text :
         {"https:[::1]/", "https:/[::1]/", "https:///a@[::1]/", "https:\\[::1]"})
        EXPECT_EQ(delivered(text), "refused") << text;
    EXPECT_EQ(delivered("https:a/[::1]/"), "https:a/[::1]/");
}

TEST(SentLink, LeadsToTheHostThatAnotherImplementationFindsInIt) {
    const auto sent = support::misleadingLinks(20'000);
    std::vector<std::string> texts = sent;
    for (const auto &link : sent) {
        const auto toDeliver = linkToDeliver(link);
        const auto url = toDeliver ? Url::parse(*toDeliver) : std::nullopt;
        texts.push_back(url ? url->absoluteString() : "");
    }
    const auto hosts = support::hostsByNode(texts);
    if (hosts.empty())
        GTEST_SKIP() << "Node.js is not installed";
    ASSERT_EQ(hosts.size(), texts.size());
    std::size_t same = 0;
    for (std::size_t index = 0; index < sent.size(); ++index) {
        const auto &link = texts[sent.size() + index];
        const auto &host = hosts[sent.size() + index];
        if (!link.empty())
            EXPECT_EQ(host, hosts[index]) << testing::PrintToString(sent[index]) << " became " << link;
        same += !host.empty() && host == hosts[index] ? 1 : 0;
    }
    EXPECT_GT(same, sent.size() / 4) << "the texts test little";
}

} // namespace fernhop
