#include "cli/PlainText.h"

#include <gtest/gtest.h>

namespace fernhop::cli {
namespace {

TEST(PlainText, LeavesOrdinaryTextAlone) {
    EXPECT_EQ(plain("https://docs.example/*?a=b&c=\\d"), "https://docs.example/*?a=b&c=\\d");
    EXPECT_EQ(plain("浏览器 Überseekarte 🦊"), "浏览器 Überseekarte 🦊");
    EXPECT_EQ(plain(""), "");
}

TEST(PlainText, EscapesWhatMovesTheCursor) {
    EXPECT_EQ(plain("a\x1b[31mb"), "a\\x1b[31mb");
    EXPECT_EQ(plain("a\nb\tc\rd\x7f"), "a\\x0ab\\x09c\\x0dd\\x7f");
    EXPECT_EQ(plain(std::string_view("\0", 1)), "\\x00");
    EXPECT_EQ(plain("\xc2\x9b"), "\\u{9b}"); // the one-character form of ESC [
}

TEST(PlainText, EscapesWhatReordersOrHidesText) {
    EXPECT_EQ(plain("a\u202eb"), "a\\u{202e}b");
    EXPECT_EQ(plain("\u200b\ufeff\u2028\u2066"), "\\u{200b}\\u{feff}\\u{2028}\\u{2066}");
}

TEST(PlainText, EscapesInvalidUtf8) {
    EXPECT_EQ(plain("a\xff"), "a\\xff");
    EXPECT_EQ(plain("\xe4\xb8"), "\\xe4\\xb8");                   // cut
    EXPECT_EQ(plain("\xc0\xaf"), "\\xc0\\xaf");                   // overlong
    EXPECT_EQ(plain("\xed\xa0\x80"), "\\xed\\xa0\\x80");          // surrogate
    EXPECT_EQ(plain("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80"); // beyond the last character
    EXPECT_EQ(plain("\xe0\x80\x80"), "\\xe0\\x80\\x80");
}

} // namespace
} // namespace fernhop::cli
