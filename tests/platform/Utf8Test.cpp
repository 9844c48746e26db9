#include "platform/Utf8.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

TEST(Utf8, FirstCharacterHasItsValueAndLength) {
    const auto expectFirst = [](std::string_view text, char32_t value, std::size_t length) {
        const auto character = firstUtf8Character(text);
        ASSERT_TRUE(character) << text;
        EXPECT_EQ(character->value, value) << text;
        EXPECT_EQ(character->length, length) << text;
    };
    expectFirst("ab", U'a', 1);
    expectFirst(std::string_view("\0", 1), 0, 1);
    expectFirst("\u0080", 0x80, 2);
    expectFirst("\u07FFx", 0x7FF, 2);
    expectFirst("\u0800", 0x800, 3);
    expectFirst("\uD7FF", 0xD7FF, 3);
    expectFirst("\uE000\xFF", 0xE000, 3);
    expectFirst("\U00010000", 0x10000, 4);
    expectFirst("\U0010FFFF", 0x10FFFF, 4);
}

TEST(Utf8, InvalidTextHasNoFirstCharacter) {
    for (const char *text : {"", "\x80", "\xFF", "\xC3", "\xE4\xB8", "\xF0\x9F\xA6",     // cut
                             "\xC3x", "\xE4\xB8x", "\xF0\x9F\xA6x",                      // interrupted
                             "\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", // overlong
                             "\xED\xA0\x80", "\xED\xBF\xBF",                             // surrogates
                             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80"})                    // beyond the last
        EXPECT_FALSE(firstUtf8Character(text)) << text;
}

TEST(Utf8, TextIsValidWhenEveryCharacterIs) {
    EXPECT_TRUE(isValidUtf8(""));
    EXPECT_TRUE(isValidUtf8("aé浏🦊"));
    EXPECT_FALSE(isValidUtf8("a\xFF"));
    EXPECT_FALSE(isValidUtf8("\xFF"
                             "a"));
    EXPECT_FALSE(isValidUtf8("aé\xF0\x9F\xA6"));
}

} // namespace
} // namespace fernhop
