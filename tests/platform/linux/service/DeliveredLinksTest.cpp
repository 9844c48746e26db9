#include "platform/linux/base/GPointer.h"
#include "platform/linux/service/LinkService.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using Links = std::vector<std::string>;

DeliveredLinks parsed(const char *text) {
    GError *error = nullptr;
    GVariant *body = g_variant_parse(nullptr, text, nullptr, nullptr, &error);
    EXPECT_EQ(error, nullptr) << (error ? error->message : "");
    // Floating or not: that differs between GLib's versions.
    const GVariantPointer held(g_variant_take_ref(body));
    return deliveredLinks(held.get());
}

TEST(DeliveredLinks, TakesTextsInTheirOrder) {
    EXPECT_EQ(parsed("(['https://b', '', 'https://a'], @a{sv} {})").links,
              (Links{"https://b", "", "https://a"}));
    EXPECT_TRUE(parsed("(@as [], @a{sv} {})").links.empty());
}

TEST(DeliveredLinks, TakesBytesOfAnyKind) {
    EXPECT_EQ(parsed("([@ay [0x68, 0xff], @ay []], @a{sv} {})").links, (Links{"h\xff", ""}));
}

TEST(DeliveredLinks, AZeroByteThatEndsBytesIsNotPartOfThem) {
    EXPECT_EQ(parsed("([b'https://a'], @a{sv} {})").links, Links{"https://a"});
    EXPECT_EQ(parsed("([@ay [0x61, 0, 0]], @a{sv} {})").links, Links{std::string("a\0", 2)});
}

TEST(DeliveredLinks, ReadsWhatTheSenderTells) {
    const auto sender =
        parsed("(@as [], {'activation-token': <'token'>, 'desktop-startup-id': <b'id'>,"
               " 'launched-pid': <42>, 'parent-pid': <uint32 43>, 'control-group': <b'/app.scope'>,"
               " 'desktop-file': <'org.example.Chat'>, 'other': <[1, 2]>})")
            .sender;
    EXPECT_EQ(sender.tokens.activationToken, "token");
    EXPECT_EQ(sender.tokens.startupID, "id");
    EXPECT_EQ(sender.launchedPid, 42);
    EXPECT_EQ(sender.parentPid, 43);
    EXPECT_EQ(sender.controlGroup, "/app.scope");
    EXPECT_EQ(sender.desktopFile, "org.example.Chat");
}

TEST(DeliveredLinks, WhatIsOfAnotherTypeIsNotTold) {
    const auto sender = parsed("(@as [], {'activation-token': <1>, 'desktop-startup-id': <['a']>,"
                               " 'launched-pid': <'42'>, 'parent-pid': <1.0>, 'control-group': <<'a'>>,"
                               " 'desktop-file': <true>})")
                            .sender;
    EXPECT_EQ(sender.tokens.activationToken, std::nullopt);
    EXPECT_EQ(sender.tokens.startupID, std::nullopt);
    EXPECT_EQ(sender.launchedPid, std::nullopt);
    EXPECT_EQ(sender.parentPid, std::nullopt);
    EXPECT_EQ(sender.controlGroup, std::nullopt);
    EXPECT_EQ(sender.desktopFile, std::nullopt);
}

TEST(DeliveredLinks, ProcessesHavePositiveNumbersOfTheirRange) {
    for (const char *number :
         {"0", "-1", "int64 2147483648", "uint32 4294967295", "int64 -9223372036854775808"}) {
        const auto body = std::string("(@as [], {'parent-pid': <") + number + ">})";
        EXPECT_EQ(parsed(body.c_str()).sender.parentPid, std::nullopt) << number;
    }
    EXPECT_EQ(parsed("(@as [], {'parent-pid': <int64 2147483647>})").sender.parentPid, 2147483647);
}

TEST(DeliveredLinks, OfTwoValuesForAKeyTheFirstCounts) {
    EXPECT_EQ(parsed("(@as [], [{'parent-pid', <1>}, {'parent-pid', <2>}])").sender.parentPid, 1);
}

TEST(DeliveredLinks, ABodyOfAnotherFormBringsNothing) {
    for (const char *body : {"'text'", "(['https://a'],)", "(@a{sv} {}, ['https://a'])", "([1], @a{sv} {})"})
        EXPECT_TRUE(parsed(body).links.empty()) << body;
}

} // namespace
} // namespace fernhop::freedesktop
