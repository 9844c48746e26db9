#include "platform/Text.h"

#include <gtest/gtest.h>

namespace fernhop::text {

TEST(Lowercase, PairsLettersOfEveryScript) {
    EXPECT_EQ(lowercased("HTTPS://Docs.Example/A-Z"), "https://docs.example/a-z");
    EXPECT_EQ(lowercased("ÄÖÜ ΑΒΓ ЖЗИ"), "äöü αβγ жзи");
    EXPECT_EQ(lowercased("𐐀"), "𐐨");
    EXPECT_EQ(lowercased(""), "");
}

TEST(Lowercase, IsIndependentOfTheLocale) {
    EXPECT_EQ(lowercased("I"), "i");
    EXPECT_EQ(lowercased("IÉ"), "ié");
    EXPECT_EQ(lowercased("İ"), "i̇");
    EXPECT_EQ(lowercased("\u212A"), "k");
}

TEST(Lowercase, EndsWordsWithTheFinalSigma) {
    EXPECT_EQ(lowercased("ΟΔΟΣ ΣΑΣ"), "οδος σας");
    EXPECT_EQ(lowercased("ΟΔΟΣ*"), "οδος*");
}

TEST(Lowercase, KeepsInvalidBytes) {
    EXPECT_EQ(lowercased("A\xFF\xC3Ä\xED\xA0\x80Z\xE2\x82"), "a\xFF\xC3ä\xED\xA0\x80z\xE2\x82");
}

TEST(Lowercase, KeepsZeroBytes) {
    using namespace std::string_view_literals;
    EXPECT_EQ(lowercased("A\0Ä"sv), "a\0ä"sv);
}

} // namespace fernhop::text
