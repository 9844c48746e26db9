#include "rules/WildcardPattern.h"

#include "platform/Ascii.h"
#include "rules/WildcardOracle.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace fernhop {

namespace {

std::string randomText(std::mt19937 &random, std::string_view letters, std::size_t longest) {
    std::string result;
    for (auto length = random() % (longest + 1); length > 0; --length)
        result += letters[random() % letters.size()];
    return result;
}

/// The match by the path that `UrlMatcher` would take.
bool wildcardMatches(std::string_view text, std::string_view pattern) {
    return ascii::isAscii(text) && ascii::isAscii(pattern)
               ? asciiWildcardMatches(ByteIndex(std::string(text)), ScannedPattern(pattern))
               : unicodeWildcardMatches(text, pattern);
}

/// Each ASCII letter as a character outside ASCII that neither combines nor decomposes.
std::string inCyrillic(std::string_view text) {
    std::string result;
    for (const char letter : text)
        result += letter == 'a' ? "ж" : letter == 'b' ? "з" : std::string(1, letter);
    return result;
}

/// Each letter with an accent, randomly composed or decomposed.
std::string accented(std::string_view text, std::mt19937 &random) {
    std::string result;
    for (const char letter : text) {
        const bool composed = random() % 2 == 0;
        result += letter == 'a'   ? (composed ? "á" : "a\u0301")
                  : letter == 'b' ? (composed ? "é" : "e\u0301")
                                  : std::string(1, letter);
    }
    return result;
}

} // namespace

TEST(WildcardPattern, OfStarsOnlyMatchesEverything) {
    for (const char *pattern : {"*", "**", "***"})
        for (const char *text : {"", "a", "https://docs.example/", "ä"})
            EXPECT_TRUE(wildcardMatches(text, pattern)) << pattern << ' ' << text;
}

TEST(WildcardPattern, AnchorsTheFirstPieceUnlessAStarPrecedesIt) {
    EXPECT_TRUE(wildcardMatches("abc", "ab*"));
    EXPECT_FALSE(wildcardMatches("xabc", "ab*"));
    EXPECT_TRUE(wildcardMatches("xabc", "*ab*"));
    EXPECT_TRUE(wildcardMatches("ab", "ab*"));
}

TEST(WildcardPattern, AnchorsTheLastPieceUnlessAStarFollowsIt) {
    EXPECT_TRUE(wildcardMatches("abc", "*bc"));
    EXPECT_FALSE(wildcardMatches("abcx", "*bc"));
    EXPECT_TRUE(wildcardMatches("abcx", "*bc*"));
    EXPECT_TRUE(wildcardMatches("bcbc", "*bc"));
}

TEST(WildcardPattern, MatchesThePiecesInOrderWithoutOverlap) {
    EXPECT_TRUE(wildcardMatches("axbxc", "a*b*c"));
    EXPECT_FALSE(wildcardMatches("acb", "a*b*c"));
    EXPECT_FALSE(wildcardMatches("a", "a*a"));
    EXPECT_FALSE(wildcardMatches("aba", "ab*ba"));
    EXPECT_TRUE(wildcardMatches("abba", "ab*ba"));
    EXPECT_TRUE(wildcardMatches("ab", "a**b"));
    EXPECT_FALSE(wildcardMatches("ab", "*b*ab"));
}

TEST(WildcardPattern, AllowsTheLastPieceAnEarlierOccurrence) {
    EXPECT_TRUE(wildcardMatches("xabab", "x*ab"));
    EXPECT_TRUE(wildcardMatches("xababa", "x*aba"));
}

TEST(WildcardPattern, HasNoOtherSpecialCharacter) {
    EXPECT_FALSE(wildcardMatches("abc", "a?*"));
    EXPECT_TRUE(wildcardMatches("a?c", "a?*"));
    EXPECT_TRUE(wildcardMatches("[a].\\", "[a].\\*"));
    EXPECT_FALSE(wildcardMatches("ab", "\\*"));
    EXPECT_FALSE(wildcardMatches("a", "[a]*"));
}

TEST(WildcardPattern, DistinguishesLetterCase) {
    EXPECT_FALSE(wildcardMatches("ABC", "a*"));
    EXPECT_FALSE(wildcardMatches("Ä", "*ä"));
}

TEST(WildcardPattern, WithoutAStarMatchesBeginningAndEnd) {
    EXPECT_TRUE(wildcardMatches("abxab", "ab"));
    EXPECT_TRUE(wildcardMatches("ab", "ab"));
    EXPECT_FALSE(wildcardMatches("xab", "ab"));
    EXPECT_FALSE(wildcardMatches("abx", "ab"));
    EXPECT_TRUE(wildcardMatches("äbxäb", "äb"));
    EXPECT_FALSE(wildcardMatches("xäb", "äb"));
}

TEST(WildcardPattern, EmptyPatternMatchesEverything) {
    EXPECT_TRUE(wildcardMatches("", ""));
    EXPECT_TRUE(wildcardMatches("abc", ""));
    EXPECT_TRUE(wildcardMatches("ä", ""));
}

TEST(WildcardPattern, TreatsCanonicallyEquivalentTextsAsEqual) {
    EXPECT_TRUE(wildcardMatches("xe\u0301y", "*é*"));
    EXPECT_TRUE(wildcardMatches("éx", "e\u0301*"));
    EXPECT_TRUE(wildcardMatches("xé", "*e\u0301"));
    EXPECT_TRUE(wildcardMatches("ék", "é*k"));
}

TEST(WildcardPattern, NeverSplitsACharacterFromItsMarks) {
    EXPECT_FALSE(wildcardMatches("e\u0301", "e*"));
    EXPECT_FALSE(wildcardMatches("xe\u0301", "*\u0301"));
    EXPECT_FALSE(wildcardMatches("xé", "*e"));
    // A star with a combining mark is another character.
    EXPECT_FALSE(wildcardMatches("abc", "a*\u0301c"));
    EXPECT_TRUE(wildcardMatches("a*\u0301c", "a*\u0301c"));
    EXPECT_TRUE(wildcardMatches("a*\u0301bc", "a*\u0301*c"));
    EXPECT_FALSE(wildcardMatches("abc", "a*\u0301*c"));
    EXPECT_TRUE(wildcardMatches("ab😀", "a*😀"));
}

TEST(WildcardPattern, TreatsInvalidBytesAsThemselves) {
    EXPECT_TRUE(wildcardMatches("a\xFFz", "a\xFF*"));
    EXPECT_FALSE(wildcardMatches("a\xFFz", "a\xFE*"));
    EXPECT_TRUE(wildcardMatches("a\xC3", "*\xC3"));
    EXPECT_FALSE(wildcardMatches("é", "*\xA9"));
}

TEST(WildcardPattern, AgreesWithTheOracleOnRandomAsciiText) {
    std::mt19937 random(1);
    int matches = 0;
    for (int round = 0; round < 60000; ++round) {
        const std::string text = randomText(random, "ab", 9);
        const std::string pattern = randomText(random, "aabb**?", 6);
        const bool expected = tests::wildcardOracle(text, pattern);
        EXPECT_EQ(wildcardMatches(text, pattern), expected) << text << ' ' << pattern;
        matches += expected;
    }
    EXPECT_GT(matches, 6000);
    EXPECT_LT(matches, 54000);
}

TEST(WildcardPattern, GeneralPathAgreesWithTheFastOne) {
    std::mt19937 random(2);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = randomText(random, "ab/", 9);
        const std::string pattern = randomText(random, "aabb**/", 6);
        EXPECT_EQ(unicodeWildcardMatches(text, pattern), wildcardMatches(text, pattern))
            << text << ' ' << pattern;
    }
}

TEST(WildcardPattern, AgreesWithTheOracleOutsideAscii) {
    std::mt19937 random(3);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = randomText(random, "ab", 9);
        const std::string pattern = randomText(random, "aabb**", 6);
        const bool expected = tests::wildcardOracle(text, pattern);
        EXPECT_EQ(wildcardMatches(inCyrillic(text), inCyrillic(pattern)), expected) << text << ' ' << pattern;
        EXPECT_EQ(wildcardMatches(accented(text, random), accented(pattern, random)), expected)
            << text << ' ' << pattern;
    }
}

} // namespace fernhop
