#include "platform/linux/tray/MenuProperties.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

TEST(MenuTextTest, KeepsWhatCanBeShown) {
    EXPECT_EQ(shownText(""), "");
    EXPECT_EQ(shownText("退出时 & *_* 😀 שלום"), "退出时 & *_* 😀 שלום");
}

TEST(MenuTextTest, ReplacesWhatTheBusRefusesAndWhatBreaksTheLine) {
    EXPECT_EQ(shownText("a\xff\xC0\x80z"), "a\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(shownText(std::string("a\0b", 3)), "a b");
    EXPECT_EQ(shownText("a\n\t\x1b[0m\x7f\u0085\u2028\u2029z"), "a   [0m    z");
    EXPECT_EQ(shownText("cut \xE2\x80"), "cut \uFFFD\uFFFD");
}

TEST(MenuTextTest, CutsWhatNoScreenIsWideEnoughFor) {
    std::string thousand;
    for (int count = 0; count < 1000; ++count)
        thousand += "刷";
    EXPECT_EQ(shownText(thousand), thousand);
    EXPECT_EQ(shownText(thousand + "x"), thousand + "…");
}

TEST(MenuTextTest, DoublesUnderscoresInLabelsAndLeavesAmpersands) {
    EXPECT_EQ(menuLabel("_a_&_&b__"), "__a__&__&b____");
}

} // namespace
} // namespace fernhop::freedesktop
