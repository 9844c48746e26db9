#include "rules/URLRuleCoding.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace fernhop {

namespace {

const std::vector<URLRule> oneRule{{"i", "p", "b"}};

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

std::string withExtra(std::string_view value) {
    return R"([{"id":"i","extra":)" + std::string(value) + R"(,"pattern":"p","browserBundleID":"b"}])";
}

} // namespace

TEST(URLRuleEncoding, WritesCompactObjectsWithThreeMembers) {
    EXPECT_EQ(encodeURLRules({}), "[]");
    EXPECT_EQ(encodeURLRules({{"1", "*.pdf", "firefox"}, {"2", "", ""}}),
              R"([{"id":"1","pattern":"*.pdf","browserBundleID":"firefox"},)"
              R"({"id":"2","pattern":"","browserBundleID":""}])");
}

TEST(URLRuleEncoding, RefusesInvalidUtf8InAnyField) {
    EXPECT_EQ(encodeURLRules({{"\xFF", "p", "b"}}), std::nullopt);
    EXPECT_EQ(encodeURLRules({{"i", "\xED\xA0\x80", "b"}}), std::nullopt);
    EXPECT_EQ(encodeURLRules({{"i", "p", "b"}, {"i", "p", "\xC3"}}), std::nullopt);
}

TEST(URLRuleCoding, ReadsWhatItWrites) {
    using namespace std::string_literals;
    const std::vector<URLRule> rules{
        {"0B1D5A3C-7C1E-4E7A-9B0A-000000000001", "https://docs.example/*", "firefox"},
        {"", "\"\\/\b\f\n\r\t\0\x1F\x7F"s, "ä€😀"},
        {"same", "same", "same"},
        {"same", "same", "same"},
        {std::string(100000, 'x'), "\u2028", " "},
    };
    EXPECT_EQ(decodeURLRules(encodeURLRules(rules).value()), rules);
}

TEST(URLRuleDecoding, KeepsTheOrderOfTheArray) {
    const auto rules = decodeURLRules(R"([{"id":"2","pattern":"b","browserBundleID":"x"},
                                         {"browserBundleID":"y","pattern":"a","id":"1"}])");
    EXPECT_EQ(rules, (std::vector<URLRule>{{"2", "b", "x"}, {"1", "a", "y"}}));
}

TEST(URLRuleDecoding, KeepsRulesThatDifferOnlyInTheirId) {
    const auto rules = decodeURLRules(R"([{"id":"1","pattern":"p","browserBundleID":"b"},
                                         {"id":"2","pattern":"p","browserBundleID":"b"}])");
    ASSERT_TRUE(rules);
    EXPECT_EQ(rules->size(), 2U);
    EXPECT_NE(rules->front(), rules->back());
}

TEST(URLRuleDecoding, NeitherTrimsNorValidatesValues) {
    EXPECT_EQ(decodeURLRules(R"([{"id":"","pattern":"  ","browserBundleID":"?"}])"),
              (std::vector<URLRule>{{"", "  ", "?"}}));
}

TEST(URLRuleDecoding, ReadsAnEmptyArray) {
    EXPECT_EQ(decodeURLRules("[]"), std::vector<URLRule>());
    EXPECT_EQ(decodeURLRules(" \n[ ]\t"), std::vector<URLRule>());
}

TEST(URLRuleDecoding, FailsWhenAMemberIsMissing) {
    constexpr std::string_view good = R"({"id":"i","pattern":"p","browserBundleID":"b"})";
    for (const char *bad : {R"({"id":"i","pattern":"p"})", R"({"id":"i","browserBundleID":"b"})",
                            R"({"pattern":"p","browserBundleID":"b"})", "{}"}) {
        EXPECT_EQ(decodeURLRules("[" + std::string(good) + "," + bad + "]"), std::nullopt) << bad;
        EXPECT_EQ(decodeURLRules("[" + std::string(bad) + "," + std::string(good) + "]"), std::nullopt)
            << bad;
    }
}

TEST(URLRuleDecoding, FailsWhenAMemberIsNotAString) {
    for (const std::string name : {"id", "pattern", "browserBundleID"})
        for (const char *value : {"null", "1", "true", "[]", "{}", "[\"p\"]", "1.5"}) {
            nlohmann::json rule{{"id", "i"}, {"pattern", "p"}, {"browserBundleID", "b"}};
            rule[name] = nlohmann::json::parse(value);
            EXPECT_EQ(decodeURLRules("[" + rule.dump() + "]"), std::nullopt) << name << ' ' << value;
        }
}

TEST(URLRuleDecoding, FailsWhenAnElementIsNotAnObject) {
    for (const char *json : {"[null]", "[1]", "[\"a\"]", "[[]]", "[true]"})
        EXPECT_EQ(decodeURLRules(json), std::nullopt) << json;
}

TEST(URLRuleDecoding, FailsWhenTheDocumentIsNotAnArray) {
    for (const char *json :
         {"", " ", "{}", "null", "\"a\"", "1", R"({"id":"i","pattern":"p","browserBundleID":"b"})"})
        EXPECT_EQ(decodeURLRules(json), std::nullopt) << json;
}

TEST(URLRuleDecoding, ComparesMemberNamesExactly) {
    EXPECT_EQ(decodeURLRules(R"([{"ID":"i","pattern":"p","browserBundleID":"b"}])"), std::nullopt);
    EXPECT_EQ(decodeURLRules(R"([{"id":"i","pattern":"p","browserBundleId":"b"}])"), std::nullopt);
    EXPECT_EQ(decodeURLRules(R"([{"id ":"i","pattern":"p","browserBundleID":"b"}])"), std::nullopt);
    EXPECT_EQ(decodeURLRules(R"([{"\u0069d":"i","pattern":"p","browserBundleID":"b"}])"), oneRule);
}

TEST(URLRuleDecoding, IgnoresMembersWithOtherNames) {
    for (const char *value :
         {"null", "true", "false", "0", "-1.5e+3", "\"a\"", "[]", "{}", "[1,[2,{\"a\":[null]}]]",
          "\"\\u00e4\\n\"", "123456789012345678901234567890123456789012345678901234567890", "1e400",
          "-0.0e-99999", R"({"id":1,"pattern":null,"x":{"browserBundleID":[]}})"})
        EXPECT_EQ(decodeURLRules(withExtra(value)), oneRule) << value;
}

TEST(URLRuleDecoding, FailsWhenAnIgnoredMemberIsNotJson) {
    for (const char *value : {"nul",
                              "nulll",
                              "tru",
                              "True",
                              "01",
                              "1.",
                              ".5",
                              "-",
                              "+1",
                              "1e",
                              "1e+",
                              "0x1",
                              "NaN",
                              "[1,]",
                              "[,1]",
                              "[1 2]",
                              "[1",
                              "{\"a\"}",
                              "{\"a\":}",
                              "{a:1}",
                              "{\"a\":1,}",
                              "{\"a\":1 \"b\":2}",
                              "\"\\x\"",
                              "\"\\ud800\"",
                              "{\"\\x\":1}",
                              "'a'",
                              "",
                              "1 2",
                              "]",
                              "}",
                              "[nul]",
                              "{\"a\":01}",
                              "\"a\"b"})
        EXPECT_EQ(decodeURLRules(withExtra(value)), std::nullopt) << value;
}

TEST(URLRuleDecoding, UsesTheLaterOfTwoMembersWithTheSameName) {
    EXPECT_EQ(decodeURLRules(R"([{"id":"x","id":"i","pattern":"p","browserBundleID":"b"}])"), oneRule);
    EXPECT_EQ(decodeURLRules(R"([{"id":1,"id":"i","pattern":"p","browserBundleID":"b"}])"), oneRule);
    EXPECT_EQ(decodeURLRules(R"([{"id":"i","id":1,"pattern":"p","browserBundleID":"b"}])"), std::nullopt);
}

TEST(URLRuleDecoding, FailsOnTrailingText) {
    for (const char *tail : {"x", "[]", ",", "]", "}", "null", "\"\"", "1"})
        EXPECT_EQ(decodeURLRules(R"([{"id":"i","pattern":"p","browserBundleID":"b"}])" + std::string(tail)),
                  std::nullopt)
            << tail;
}

TEST(URLRuleDecoding, FailsOnTruncatedText) {
    const std::string json = R"([{"id":"i","pattern":"p","browserBundleID":"b"}])";
    for (std::size_t length = 0; length < json.size(); ++length)
        EXPECT_EQ(decodeURLRules(std::string_view(json).substr(0, length)), std::nullopt) << length;
}

TEST(URLRuleDecoding, FailsOnMisplacedCommasAndColons) {
    for (const char *json : {R"([,{"id":"i","pattern":"p","browserBundleID":"b"}])",
                             R"([{"id":"i","pattern":"p","browserBundleID":"b"},])",
                             R"([{"id":"i","pattern":"p","browserBundleID":"b",}])",
                             R"([{"id":"i" "pattern":"p","browserBundleID":"b"}])",
                             R"([{"id" "i","pattern":"p","browserBundleID":"b"}])",
                             R"([{"id":"i"x,"pattern":"p","browserBundleID":"b"}])",
                             R"([{"id":"i","pattern":"p","browserBundleID":"b"}{"id":"i","pattern":"p"}])",
                             R"([{id:"i","pattern":"p","browserBundleID":"b"}])"})
        EXPECT_EQ(decodeURLRules(json), std::nullopt) << json;
}

TEST(URLRuleDecoding, FailsOnInvalidUtf8AnywhereInTheText) {
    EXPECT_EQ(decodeURLRules("[{\"id\":\"\xFF\",\"pattern\":\"p\",\"browserBundleID\":\"b\"}]"),
              std::nullopt);
    EXPECT_EQ(decodeURLRules(withExtra("\"\xC3\"")), std::nullopt);
    EXPECT_EQ(decodeURLRules(withExtra("\"\xED\xA0\x80\"")), std::nullopt);
    EXPECT_EQ(decodeURLRules("[]\xFF"), std::nullopt);
}

TEST(URLRuleDecoding, FailsOnRawControlCharactersInStrings) {
    EXPECT_EQ(decodeURLRules("[{\"id\":\"\n\",\"pattern\":\"p\",\"browserBundleID\":\"b\"}]"), std::nullopt);
    EXPECT_EQ(decodeURLRules(std::string_view("[]\0", 3)), std::nullopt);
}

TEST(URLRuleDecoding, ReadsEscapes) {
    EXPECT_EQ(decodeURLRules(
                  R"([{"id":"\u0000","pattern":"https:\/\/\u00e4\ud83d\ude00","browserBundleID":"\"\\"}])"),
              (std::vector<URLRule>{{std::string(1, '\0'), "https://ä😀", "\"\\"}}));
    EXPECT_EQ(decodeURLRules(R"([{"id":"\ud800","pattern":"p","browserBundleID":"b"}])"), std::nullopt);
    EXPECT_EQ(decodeURLRules(R"([{"id":"\q","pattern":"p","browserBundleID":"b"}])"), std::nullopt);
}

TEST(URLRuleDecoding, SkipsOneByteOrderMark) {
    EXPECT_EQ(decodeURLRules("\xEF\xBB\xBF[]"), std::vector<URLRule>());
    EXPECT_EQ(decodeURLRules("\xEF\xBB\xBF\xEF\xBB\xBF[]"), std::nullopt);
    EXPECT_EQ(decodeURLRules("[]\xEF\xBB\xBF"), std::nullopt);
}

TEST(URLRuleDecoding, RefusesDeepNesting) {
    EXPECT_EQ(decodeURLRules(withExtra(nested(510))), oneRule);
    EXPECT_EQ(decodeURLRules(withExtra(nested(511))), std::nullopt);
    EXPECT_EQ(decodeURLRules(withExtra(nested(1000000))), std::nullopt);
    EXPECT_EQ(decodeURLRules(nested(1000000)), std::nullopt);
    EXPECT_EQ(decodeURLRules(std::string(1000000, '[')), std::nullopt);
}

TEST(URLRuleDecoding, ReadsManyRules) {
    std::vector<URLRule> rules;
    for (int number = 0; number < 10000; ++number)
        rules.push_back({std::to_string(number), "pattern", "browser"});
    EXPECT_EQ(decodeURLRules(encodeURLRules(rules).value()), rules);
}

} // namespace fernhop
