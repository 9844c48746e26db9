#include "rules/ScannedPattern.h"

#include "platform/Ascii.h"

#include <gtest/gtest.h>

#include <random>

namespace fernhop {

TEST(ScannedPattern, HandlesEveryAsciiCharacterAtEveryPosition) {
    for (std::size_t place = 0; place < 20; ++place)
        for (int value = 0; value < 0x80; ++value) {
            std::string text(20, 'Q');
            text[place] = static_cast<char>(value);
            const ScannedPattern pattern(text);
            EXPECT_EQ(pattern.text(), ascii::lowercased(text));
            EXPECT_TRUE(pattern.isAscii());
            EXPECT_EQ(pattern.hasStar(), value == '*');
        }
}

TEST(ScannedPattern, DetectsACharacterOutsideAsciiAtEveryPosition) {
    for (const std::size_t size : {1U, 7U, 8U, 9U, 64U, 300U})
        for (std::size_t place = 0; place < size; ++place) {
            std::string text(size, 'a');
            text[place] = '\x80';
            EXPECT_FALSE(ScannedPattern(text).isAscii()) << size << ' ' << place;
        }
}

TEST(ScannedPattern, FindsStarsLikeASearch) {
    std::mt19937 random(4);
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        for (auto length = random() % 300; length > 0; --length)
            text += random() % 20 ? static_cast<char>(random() % 0x80) : '*';
        const ScannedPattern pattern(text);
        EXPECT_EQ(pattern.text(), ascii::lowercased(text));
        EXPECT_EQ(pattern.hasStar(), text.find('*') != std::string::npos);
        for (std::size_t from = 0; from <= text.size(); ++from)
            ASSERT_EQ(pattern.starFrom(from), text.find('*', from)) << text << ' ' << from;
    }
}

} // namespace fernhop
