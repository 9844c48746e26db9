#include "platform/Text.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace fernhop::text {

namespace {

const Locale english{"en_US.UTF-8"};
const Locale turkish{"tr_TR.UTF-8"};
const Locale azeri{"az_AZ"};
const Locale lithuanian{"lt_LT"};

std::optional<std::pair<std::size_t, std::size_t>> found(std::string_view text, std::string_view piece,
                                                         std::size_t from = 0) {
    const auto occurrence = firstOccurrence(text, piece, from);
    return occurrence ? std::optional(std::pair(occurrence->start, occurrence->end)) : std::nullopt;
}

std::optional<std::pair<std::size_t, std::size_t>> at(std::size_t start, std::size_t end) {
    return std::pair(start, end);
}

constexpr auto nowhere = std::nullopt;

bool contains(std::string_view text, std::string_view pattern, const Locale &locale = english) {
    return localizedCaseInsensitiveContains(text, pattern, locale);
}

} // namespace

TEST(FirstOccurrence, IsTheLeftmostAtOrAfterTheGivenByte) {
    EXPECT_EQ(found("abcabc", "bc"), at(1, 3));
    EXPECT_EQ(found("abcabc", "bc", 1), at(1, 3));
    EXPECT_EQ(found("abcabc", "bc", 2), at(4, 6));
    EXPECT_EQ(found("abcabc", "bc", 5), nowhere);
    EXPECT_EQ(found("abcabc", "bc", 99), nowhere);
    EXPECT_EQ(found("ébé", "é", 1), at(3, 5));
    EXPECT_EQ(found("ébé", "é", 99), nowhere);
}

TEST(FirstOccurrence, DistinguishesLetterCase) {
    EXPECT_EQ(found("abc", "B"), nowhere);
    EXPECT_EQ(found("äbc", "Ä"), nowhere);
}

TEST(FirstOccurrence, OfAnEmptyPieceDoesNotExist) {
    EXPECT_EQ(found("abc", ""), nowhere);
    EXPECT_EQ(found("é", ""), nowhere);
    EXPECT_EQ(found("", "a"), nowhere);
}

TEST(FirstOccurrence, TreatsCanonicallyEquivalentTextsAsEqual) {
    EXPECT_EQ(found("xe\u0301y", "é"), at(1, 4));
    EXPECT_EQ(found("xéy", "e\u0301"), at(1, 3));
    EXPECT_EQ(found("e\u0323\u0307", "e\u0307\u0323"), at(0, 5));
    EXPECT_EQ(found("ệ", "e\u0302\u0323"), at(0, 3));
    EXPECT_EQ(found("\u212B", "Å"), at(0, 3));
    EXPECT_EQ(found("a;b", "\u037E"), at(1, 2));
    EXPECT_EQ(found("한글", "\u1100\u1173\u11AF"), at(3, 6));
}

TEST(FirstOccurrence, TreatsCompatibilityEquivalentTextsAsDifferent) {
    EXPECT_EQ(found("ﬁ", "fi"), nowhere);
    EXPECT_EQ(found("ａ", "a"), nowhere);
}

TEST(FirstOccurrence, CoversWholeCombiningSequences) {
    EXPECT_EQ(found("é", "e"), nowhere);
    EXPECT_EQ(found("e\u0301", "e"), nowhere);
    EXPECT_EQ(found("e\u0301", "\u0301"), nowhere);
    EXPECT_EQ(found("ée", "e"), at(2, 3));
    EXPECT_EQ(found("e\u0301\u0323", "e\u0323"), nowhere);
    EXPECT_EQ(found("a*\u0338b*", "*"), at(5, 6));
    EXPECT_EQ(found("\u1112\u1161\u11AB", "\u1112\u1161"), nowhere);
    EXPECT_EQ(found("한", "하"), nowhere);
    EXPECT_EQ(found("a\u200Db", "a"), nowhere);
}

TEST(FirstOccurrence, NeverBeginsInsideASequence) {
    EXPECT_EQ(found("e\u0301\u0301", "\u0301", 1), nowhere);
    EXPECT_EQ(found("éé", "é", 1), at(2, 4));
}

TEST(FirstOccurrence, TreatsAnInvalidByteAsACharacter) {
    EXPECT_EQ(found("a\xFFz", "\xFF"), at(1, 2));
    EXPECT_EQ(found("a\xFFz", "\xFE"), nowhere);
    EXPECT_EQ(found("é", "\xC3"), nowhere);
    EXPECT_EQ(found("é", "\xA9"), nowhere);
    EXPECT_EQ(found("e\u0301", "e\xCC"), nowhere);
    EXPECT_EQ(found("\xE2\x82x", "\xE2"), at(0, 1));
    EXPECT_EQ(found("\xE2\x82x", "\x82x"), at(1, 3));
    EXPECT_EQ(found("\xFF", "\uFFFD"), nowhere);
    EXPECT_EQ(found("\xED\xA0\x80", "\xED\xA0\x80"), at(0, 3));
}

TEST(EndsWith, ComparesLikeTheSearch) {
    EXPECT_TRUE(endsWith("abc", "bc"));
    EXPECT_FALSE(endsWith("abc", "ab"));
    EXPECT_FALSE(endsWith("c", "abc"));
    EXPECT_FALSE(endsWith("abC", "c"));
    EXPECT_TRUE(endsWith("xe\u0301", "é"));
    EXPECT_TRUE(endsWith("xé", "e\u0301"));
    EXPECT_FALSE(endsWith("e\u0301", "\u0301"));
    EXPECT_FALSE(endsWith("é", "e"));
    EXPECT_TRUE(endsWith("abc", ""));
    EXPECT_TRUE(endsWith("é", ""));
    EXPECT_TRUE(endsWith("a\xFF", "\xFF"));
    EXPECT_FALSE(endsWith("é", "\xA9"));
}

TEST(LocalizedContains, IgnoresLetterCase) {
    EXPECT_TRUE(contains("https://docs.example/x", "DOCS"));
    EXPECT_TRUE(contains("HTTPS://DOCS.EXAMPLE/", "docs"));
    EXPECT_TRUE(contains("x/ÄÖÜ", "äöü"));
    EXPECT_TRUE(contains("οδος", "ΟΔΟΣ"));
    EXPECT_FALSE(contains("docs", "dogs"));
    EXPECT_FALSE(contains("docs", "docs.example"));
}

TEST(LocalizedContains, FoldsFully) {
    EXPECT_TRUE(contains("strasse", "STRAßE"));
    EXPECT_TRUE(contains("straße", "STRASSE"));
    EXPECT_TRUE(contains("ſ", "S"));
    EXPECT_TRUE(contains("k", "\u212A"));
    EXPECT_FALSE(contains("ß", "s"));
}

TEST(LocalizedContains, TreatsCanonicallyEquivalentTextsAsEqual) {
    EXPECT_TRUE(contains("CAFE\u0301", "café"));
    EXPECT_TRUE(contains("café", "E\u0301"));
    EXPECT_FALSE(contains("café", "E"));
}

TEST(LocalizedContains, DoesNotContainAnEmptyPattern) {
    EXPECT_FALSE(contains("docs", ""));
    EXPECT_FALSE(contains("é", ""));
    EXPECT_FALSE(contains("", ""));
}

TEST(LocalizedContains, PairsLettersAsInTurkishAndAzeri) {
    for (const Locale &locale : {turkish, azeri}) {
        EXPECT_FALSE(contains("i", "I", locale));
        EXPECT_FALSE(contains("I", "i", locale));
        EXPECT_TRUE(contains("I", "I", locale));
        EXPECT_TRUE(contains("ı", "I", locale));
        EXPECT_TRUE(contains("I", "ı", locale));
        EXPECT_TRUE(contains("i", "İ", locale));
        EXPECT_TRUE(contains("İ", "i", locale));
        EXPECT_TRUE(contains("I\u0307", "i", locale));
        EXPECT_TRUE(contains("I\u0323\u0307", "i\u0323", locale));
        EXPECT_TRUE(contains("DOCS.EXAMPLE", "docs.example", locale));
        EXPECT_FALSE(contains("x/INDEX", "index", locale));
    }
    EXPECT_TRUE(contains("i", "I"));
    EXPECT_FALSE(contains("ı", "I"));
    EXPECT_FALSE(contains("İ", "i"));
}

TEST(LocalizedContains, KeepsTheDotAsInLithuanian) {
    EXPECT_TRUE(contains("i\u0307\u0300", "Ì", lithuanian));
    EXPECT_TRUE(contains("Ì", "i\u0307\u0300", lithuanian));
    EXPECT_TRUE(contains("ì", "Ì", lithuanian));
    EXPECT_TRUE(contains("į\u0307\u0301", "Į\u0301", lithuanian));
    EXPECT_TRUE(contains("j\u0307\u0303", "J\u0303", lithuanian));
    EXPECT_FALSE(contains("e\u0307", "E", lithuanian));
    EXPECT_TRUE(contains("i", "I", lithuanian));
    EXPECT_FALSE(contains("i\u0307\u0300", "Ì", english));
}

TEST(LocalizedContains, TreatsAnInvalidByteAsACharacter) {
    EXPECT_TRUE(contains("A\xFFZ", "a\xFFz"));
    EXPECT_FALSE(contains("A\xFFZ", "a\xFEz"));
    EXPECT_FALSE(contains("é", "\xC3"));
    EXPECT_TRUE(contains("É\xC3", "é\xC3", turkish));
}

TEST(CaseInsensitiveEqual, IsIndependentOfTheLocale) {
    EXPECT_TRUE(caseInsensitiveEqual("Docs.Example", "docs.EXAMPLE"));
    EXPECT_TRUE(caseInsensitiveEqual("I", "i"));
    EXPECT_TRUE(caseInsensitiveEqual("É", "e\u0301"));
    EXPECT_TRUE(caseInsensitiveEqual("", ""));
    EXPECT_FALSE(caseInsensitiveEqual("a", "ab"));
    EXPECT_FALSE(caseInsensitiveEqual("e", "é"));
    EXPECT_FALSE(caseInsensitiveEqual("[", "{"));
    EXPECT_FALSE(caseInsensitiveEqual("@", "`"));
    EXPECT_FALSE(caseInsensitiveEqual("\xFF", "\xFE"));
    EXPECT_TRUE(caseInsensitiveEqual("A\xFF", "a\xFF"));
}

} // namespace fernhop::text
