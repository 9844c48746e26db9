#include "platform/Text.h"

#include <gtest/gtest.h>

namespace fernhop::text {

TEST(Trimming, RemovesEveryKindOfWhiteSpaceFromBothEnds) {
    for (const std::string space : {" ", "\t", "\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u00A0", "\u1680",
                                    "\u2003", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"})
        EXPECT_EQ(trimmed(space + space + "a" + space + "b" + space), "a" + space + "b") << space;
}

TEST(Trimming, KeepsOtherCharacters) {
    using namespace std::string_view_literals;
    for (const std::string_view text : {"\x1F\x1F"sv, "\0"sv, "\x7F"sv, "\uFEFF"sv, "\u180E"sv, "é"sv})
        EXPECT_EQ(trimmed(text), text);
}

TEST(Trimming, IsEmptyForWhiteSpaceOnly) {
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \n\u2028\u3000 "), "");
}

TEST(Trimming, TreatsInvalidBytesAsCharacters) {
    EXPECT_EQ(trimmed(" \xFF "), "\xFF");
    EXPECT_EQ(trimmed(" \x80"), "\x80");
    EXPECT_EQ(trimmed("\xE2\x80 "), "\xE2\x80");
    EXPECT_EQ(trimmed("\x85"), "\x85");
    EXPECT_EQ(trimmed("a\xA0"), "a\xA0");
}

TEST(Trimming, ReturnsAViewOfTheText) {
    const std::string_view text = "  a  ";
    EXPECT_EQ(trimmed(text).data(), text.data() + 2);
}

} // namespace fernhop::text
