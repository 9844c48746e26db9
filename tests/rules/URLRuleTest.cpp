#include "rules/URLRule.h"

#include "platform/Text.h"
#include "rules/UrlMatcher.h"
#include "rules/WildcardOracle.h"

#include <gtest/gtest.h>

#include <random>

namespace fernhop {

namespace {

bool matches(std::string_view pattern, std::string_view url) {
    return URLRule{"id", std::string(pattern), "browser"}.matches(Url::parse(url).value());
}

bool matchesText(std::string_view pattern, std::string_view text, const text::Locale &locale = {}) {
    return UrlMatcher(text, locale).matches(pattern);
}

} // namespace

struct WorkedExample {
    const char *pattern;
    const char *url;
    bool matches;

    friend std::ostream &operator<<(std::ostream &output, const WorkedExample &example) {
        return output << example.pattern << " on " << example.url;
    }
};

class URLRuleExamples : public testing::TestWithParam<WorkedExample> {};

TEST_P(URLRuleExamples, Match) {
    const auto &[pattern, url, expected] = GetParam();
    EXPECT_EQ(matches(pattern, url), expected) << pattern << ' ' << url;
    EXPECT_EQ(UrlMatcher(Url::parse(url).value()).matches(pattern), expected);
}

INSTANTIATE_TEST_SUITE_P(
    AllOfThem, URLRuleExamples,
    testing::Values(WorkedExample{"https://docs.example/*", "https://docs.example/team/issue/1", true},
                    WorkedExample{"https://docs.example/*", "https://docs.example", false},
                    WorkedExample{"https://docs.example/*", "http://docs.example/x", false},
                    WorkedExample{"docs.example", "https://DOCS.example/x", true},
                    WorkedExample{"  docs.example  ", "https://docs.example/x", true},
                    WorkedExample{"docs.example*", "https://docs.example/x", false},
                    WorkedExample{"*docs.example*", "https://docs.example/x", true},
                    WorkedExample{"*.pdf", "https://docs.example/c.PDF", true},
                    WorkedExample{"*.pdf", "https://docs.example/c.pdf?x=1", false},
                    WorkedExample{"**", "https://docs.example/", true},
                    WorkedExample{"**", "mailto:a@b.example", true},
                    WorkedExample{"*a*", "https://b.example/", true},
                    WorkedExample{"*a*", "https://b.test/", false},
                    WorkedExample{"", "https://docs.example/", false},
                    WorkedExample{"   ", "https://docs.example/", false}));

TEST(URLRule, WithAPatternOfWhiteSpaceOnlyMatchesNothing) {
    for (const char *pattern : {"", " ", "\n\t\r", "\u00A0\u2028\u3000"}) {
        EXPECT_FALSE(matches(pattern, "https://docs.example/"));
        EXPECT_FALSE(matchesText(pattern, "https://docs.example/ä"));
        EXPECT_FALSE(matchesText(pattern, ""));
    }
}

TEST(URLRule, WithStarsOnlyMatchesEveryUrl) {
    for (const char *pattern : {"*", " * ", "\n**\u2028", "***"}) {
        EXPECT_TRUE(matches(pattern, "https://docs.example/"));
        EXPECT_TRUE(matchesText(pattern, "ä"));
    }
}

TEST(URLRule, IgnoresLetterCaseInASubstring) {
    EXPECT_TRUE(matches("DOCS.Example", "https://docs.example/x"));
    EXPECT_TRUE(matches("docs.example", "HTTPS://DOCS.EXAMPLE/X"));
    EXPECT_TRUE(matchesText("BÜCHER", "https://bücher.example/"));
}

TEST(URLRule, IgnoresLetterCaseInAWildcard) {
    EXPECT_TRUE(matches("HTTPS://DOCS.*", "https://docs.example/x"));
    EXPECT_TRUE(matches("https://docs.*", "HTTPS://DOCS.EXAMPLE/X"));
    EXPECT_TRUE(matchesText("*BÜCHER*", "https://bücher.example/"));
    EXPECT_TRUE(matchesText("*ΟΔΟΣ", "ΟΔΟΣ"));
}

TEST(URLRule, FindsASubstringAnywhereInTheUrl) {
    for (const char *pattern : {"https", "docs", "/path", "query=1", "#frag", "ment"})
        EXPECT_TRUE(matches(pattern, "https://docs.example/path?query=1#fragment")) << pattern;
}

TEST(URLRule, ComparesPercentEscapesAsWritten) {
    EXPECT_FALSE(matches("a b", "https://docs.example/a%20b"));
    EXPECT_TRUE(matches("a%20b", "https://docs.example/a%20b"));
    EXPECT_TRUE(matches("%C3%A4", "https://docs.example/%c3%a4"));
    EXPECT_FALSE(matches("ä", "https://docs.example/%C3%A4"));
    EXPECT_FALSE(matches("*/a b", "https://docs.example/a%20b"));
}

TEST(URLRule, AddsAndRemovesNoTrailingSlash) {
    EXPECT_FALSE(matches("docs.example/", "https://docs.example"));
    EXPECT_FALSE(matches("https*docs.example", "https://docs.example/"));
}

TEST(URLRule, TrimsOnlyItsEnds) {
    EXPECT_TRUE(matches("\u3000docs.example\u2028", "https://docs.example/x"));
    EXPECT_FALSE(matches("docs. example", "https://docs.example/x"));
    EXPECT_TRUE(matches(" https://docs.example/* ", "https://docs.example/x"));
}

TEST(URLRule, FindsCharactersOutsideAsciiThatBecomeAscii) {
    // The Kelvin sign is lower-cased to "k", the Greek question mark is equivalent to ";".
    EXPECT_TRUE(matches("*\u212A*", "https://k.example/"));
    EXPECT_TRUE(matches("\u212A", "https://k.example/"));
    EXPECT_TRUE(matches("*a\u037E*", "https://docs.example/a;b"));
    EXPECT_TRUE(matches("a\u037E", "https://docs.example/a;b"));
}

TEST(URLRule, TreatsAStarWithAMarkAsAnotherCharacter) {
    EXPECT_FALSE(matches("https*\u0301example/", "https://docs.example/"));
    EXPECT_TRUE(matchesText("B*\u0301", "ab*\u0301c"));
}

TEST(URLRule, LowercasesTheUrlWithoutALocaleAndComparesByTheLocale) {
    const text::Locale turkish{"tr_TR.UTF-8"};
    EXPECT_TRUE(matchesText("index", "https://docs.example/INDEX", turkish));
    EXPECT_FALSE(matchesText("INDEX", "https://docs.example/INDEX", turkish));
    EXPECT_FALSE(matchesText("INDEX", "https://docs.example/index", turkish));
    EXPECT_TRUE(matchesText("*INDEX", "https://docs.example/index", turkish));
    EXPECT_TRUE(matchesText("DOCS", "https://docs.example/", turkish));
    EXPECT_TRUE(matchesText("İNDEX", "https://docs.example/index", turkish));
    EXPECT_TRUE(matchesText("INDEX", "https://docs.example/index", {"de_DE.UTF-8"}));
}

TEST(URLRule, TestsPatternsOfAnyLength) {
    const std::string path(100000, 'a');
    const std::string url = "https://docs.example/" + path + "/end";
    EXPECT_TRUE(matches(path, url));
    EXPECT_TRUE(matches("*" + path + "*", url));
    EXPECT_FALSE(matches(path + "b", url));
    EXPECT_TRUE(matches(std::string(100000, '*'), url));
    for (const std::size_t length : {255U, 256U, 257U})
        EXPECT_TRUE(matches(std::string(length, 'A'), url)) << length;
}

TEST(URLRule, HandlesZeroAndInvalidBytes) {
    using namespace std::string_view_literals;
    EXPECT_FALSE(matches("docs\0"sv, "https://docs.example/"));
    EXPECT_FALSE(matches("\xFF", "https://docs.example/"));
    EXPECT_FALSE(matches("*\xFF*", "https://docs.example/"));
    EXPECT_TRUE(matchesText("B\xFF", "ab\xFF"));
}

TEST(URLRule, IsEqualWhenAllFieldsAreEqual) {
    const URLRule rule{"1", "pattern", "browser"};
    EXPECT_EQ(rule, (URLRule{"1", "pattern", "browser"}));
    EXPECT_NE(rule, (URLRule{"2", "pattern", "browser"}));
    EXPECT_NE(rule, (URLRule{"1", "Pattern", "browser"}));
    EXPECT_NE(rule, (URLRule{"1", "pattern", "Browser"}));
}

TEST(UrlMatcher, FastPathAgreesWithTheGeneralOne) {
    std::mt19937 random(5);
    const auto word = [&random](std::string_view letters, std::size_t longest) {
        std::string result;
        for (auto length = random() % (longest + 1); length > 0; --length)
            result += letters[random() % letters.size()];
        return result;
    };
    for (int round = 0; round < 20000; ++round) {
        const std::string text = word("aAbBiI/.", 10);
        const std::string pattern = word("aAbBiI*/ ", 5);
        for (const char *locale : {"en", "tr", "lt"}) {
            const bool wildcard = pattern.find('*') != std::string::npos;
            const std::string_view trimmed = text::trimmed(pattern);
            const std::string lowercased = text::lowercased(trimmed);
            const bool expected =
                !trimmed.empty() && (wildcard ? tests::wildcardOracle(text::lowercased(text), lowercased)
                                              : text::localizedCaseInsensitiveContains(text::lowercased(text),
                                                                                       trimmed, {locale}));
            EXPECT_EQ(matchesText(pattern, text, {locale}), expected)
                << text << ' ' << pattern << ' ' << locale;
            // A character that no pattern contains makes the matcher take the general path.
            if (!wildcard) {
                EXPECT_EQ(matchesText(pattern, text + "ж", {locale}), expected) << text << ' ' << pattern;
            }
        }
    }
}

} // namespace fernhop
