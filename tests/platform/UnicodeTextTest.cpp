#include "platform/UnicodeText.h"

#include <gtest/gtest.h>

#include <random>

namespace fernhop::text {

TEST(UnicodeText, ReadsCharacterByCharacter) {
    EXPECT_EQ(characterAt("aé€😀", 0), (Character{U'a', 1}));
    EXPECT_EQ(characterAt("aé€😀", 1), (Character{U'é', 2}));
    EXPECT_EQ(characterAt("aé€😀", 3), (Character{U'€', 3}));
    EXPECT_EQ(characterAt("aé€😀", 6), (Character{U'😀', 4}));
}

TEST(UnicodeText, TreatsEachInvalidByteAsACharacter) {
    // A truncated sequence, a surrogate, an overlong form, a code point above the last one.
    for (const std::string_view text : {"\xE2\x82", "\xED\xA0\x80", "\xC0\x80", "\xF4\x90\x80\x80", "\xFF"})
        for (std::size_t position = 0; position < text.size(); ++position)
            EXPECT_EQ(characterAt(text, position),
                      (Character{char32_t{0xDC00} + static_cast<unsigned char>(text[position]), 1}));
}

TEST(UnicodeText, FindsTheLastCharacter) {
    EXPECT_EQ(lastCharacter("aé"), (Character{U'é', 2}));
    EXPECT_EQ(lastCharacter("😀"), (Character{U'😀', 4}));
    EXPECT_EQ(lastCharacter("é\xA9"), (Character{0xDCA9, 1}));
    EXPECT_EQ(lastCharacter("\xE2\x82"), (Character{0xDC82, 1}));
}

TEST(UnicodeText, SurvivesConversionToUtf16AndBack) {
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto length = random() % 12; length > 0; --length)
            text += static_cast<char>(random() % 4 ? 0x80 + random() % 0x80 : random() % 0x80);
        EXPECT_EQ(toUtf8(toUtf16(text)), text);
    }
    EXPECT_EQ(toUtf16("a😀\xFF"), u"a😀\xDCFF");
}

TEST(UnicodeText, ReplacesLoneSurrogates) {
    EXPECT_EQ(withoutLoneSurrogates(toUtf16("a😀\xFFz")), u"a😀\uFFFDz");
    EXPECT_EQ(withoutLoneSurrogates(u"\xD83D\xD83D\xDE00\xDE00\xD83D"), u"\uFFFD😀\uFFFD\uFFFD");
    EXPECT_EQ(withoutLoneSurrogates(u""), u"");
    EXPECT_EQ(toUtf8(u"\xD800z\xDC00"), "\uFFFDz\uFFFD");
}

} // namespace fernhop::text
