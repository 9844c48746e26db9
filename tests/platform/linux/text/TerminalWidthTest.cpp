#include "platform/TerminalWidth.h"

#include <gtest/gtest.h>

namespace fernhop::text {

TEST(TerminalWidth, CountsColumns) {
    EXPECT_EQ(terminalColumns("abc"), 3U);
    EXPECT_EQ(terminalColumns("é"), 1U);
    EXPECT_EQ(terminalColumns("e\u0301"), 1U);
    EXPECT_EQ(terminalColumns("浏览器"), 6U);
    EXPECT_EQ(terminalColumns("한글"), 4U);
    EXPECT_EQ(terminalColumns("ﾊﾛｰ"), 3U); // half-width forms
    EXPECT_EQ(terminalColumns("🦊"), 2U);
    EXPECT_EQ(terminalColumns("\U0001F44D\U0001F3FD"), 2U); // with a skin tone
    EXPECT_EQ(terminalColumns("ภาษาไทย"), 7U);
    EXPECT_EQ(terminalColumns("ที่"), 1U);
    EXPECT_EQ(terminalColumns("\u1112\u1161\u11ab"), 2U); // a Hangul syllable of three letters
    EXPECT_EQ(terminalColumns("\u2764\ufe0f"), 1U);       // a variation selector takes no column
    EXPECT_EQ(terminalColumns(""), 0U);
}

} // namespace fernhop::text
