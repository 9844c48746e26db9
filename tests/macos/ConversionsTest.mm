#include "platform/macos/Conversions.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace fernhop::macos {
namespace {

using namespace std::string_view_literals;

class Conversions : public testing::Test {
  protected:
    static std::string thereAndBack(std::string_view text) { return fromNSString(toNSString(text)); }
    static PropertyValue thereAndBack(const PropertyValue &value) {
        return fromPropertyList(toPropertyList(value)).value();
    }

    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    ~Conversions() override { [pool release]; }
};

TEST_F(Conversions, KeepText) {
    for (const auto text : {""sv, "docs"sv, "größe 链接 🍃"sv, "a\0b"sv, "\uFEFFmark"sv, "e\u0301"sv})
        EXPECT_EQ(thereAndBack(text), text);
    EXPECT_EQ([toNSString("🍃") length], 2U);
}

TEST_F(Conversions, ReplaceEachInvalidByte) {
    EXPECT_EQ(thereAndBack("a\xFF\xC3z\xE2\x82"), "a\uFFFD\uFFFDz\uFFFD\uFFFD");
    EXPECT_EQ(thereAndBack("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
    NSString *lone = [NSString stringWithFormat:@"a%Cb%C", unichar{0xD83D}, unichar{0xDE00}];
    EXPECT_EQ(fromNSString(lone), "a\uFFFDb\uFFFD");
}

TEST_F(Conversions, DistinguishTextFromOtherObjects) {
    EXPECT_EQ(textOf(@"text"), "text");
    EXPECT_EQ(textOf(@""), "");
    EXPECT_EQ(textOf(nil), std::nullopt);
    EXPECT_EQ(textOf([NSNumber numberWithInt:1]), std::nullopt);
    EXPECT_EQ(textOf([NSArray array]), std::nullopt);
}

TEST_F(Conversions, KeepTheTextOfUrls) {
    for (const std::string text : {"https://docs.example/%F0%c3$name$(x)?a=b#c", "file:///a%20b/c.app/",
                                   "mailto:a@b", "https://docs.example", "http://[2001:db8::1]:80/"}) {
        const auto url = Url::parse(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(fromNSString([toNSURL(*url) absoluteString]), text);
        EXPECT_EQ(fromNSURL(toNSURL(*url)), url);
    }
    EXPECT_EQ(fromNSURL(nil), std::nullopt);
    EXPECT_EQ(fromNSURL([NSURL fileURLWithPath:@"/tmp"])->path(), "/tmp");
}

TEST_F(Conversions, ResolveRelativeUrls) {
    NSURL *base = [NSURL URLWithString:@"file:///Applications/"];
    EXPECT_EQ(fromNSURL([NSURL URLWithString:@"a.app" relativeToURL:base]),
              Url::parse("file:///Applications/a.app"));
    EXPECT_EQ(fromNSURL([NSURL URLWithString:@"a.app"]), std::nullopt);
}

TEST_F(Conversions, KeepEveryPropertyValue) {
    for (const PropertyValue &value :
         {PropertyValue{""}, PropertyValue{"链接"}, PropertyValue{std::int64_t{0}},
          PropertyValue{std::int64_t{1}}, PropertyValue{INT64_MAX}, PropertyValue{INT64_MIN},
          PropertyValue{0.5}, PropertyValue{1.0}, PropertyValue{0.0}, PropertyValue{true},
          PropertyValue{false}, PropertyValue{PropertyData{"\xff\0"}}, PropertyValue{PropertyData{}},
          PropertyValue{PropertyDate{86400.5}}, PropertyValue{PropertyArray{}},
          PropertyValue{PropertyArray{PropertyValue{true}, PropertyValue{std::int64_t{1}}}},
          PropertyValue{PropertyDictionary{}},
          PropertyValue{PropertyDictionary{{"", {"empty"}}, {"größe", {PropertyArray{{1.5}}}}}}})
        EXPECT_EQ(thereAndBack(value), value);
}

TEST_F(Conversions, OmitValuesThatPropertyListsCannotContain) {
    EXPECT_EQ(fromPropertyList(nil), std::nullopt);
    EXPECT_EQ(fromPropertyList([NSNull null]), std::nullopt);
    EXPECT_EQ(fromPropertyList([NSArray arrayWithObjects:[NSNull null], @"kept", nil]),
              (PropertyValue{PropertyArray{{"kept"}}}));
    NSDictionary *mixed =
        [NSDictionary dictionaryWithObjectsAndKeys:@"kept", @"key", @"lost", [NSNumber numberWithInt:1],
                                                   [NSNull null], @"null", nil];
    EXPECT_EQ(fromPropertyList(mixed), (PropertyValue{PropertyDictionary{{"key", {"kept"}}}}));
}

} // namespace
} // namespace fernhop::macos
