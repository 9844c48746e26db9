#include "rules/ByteIndex.h"

#include <gtest/gtest.h>

#include <random>

namespace fernhop {

namespace {

constexpr std::size_t nowhere = std::string_view::npos;

} // namespace

TEST(ByteIndex, FindsTheFirstOccurrenceFromAPosition) {
    const ByteIndex index("abcabc");
    EXPECT_EQ(index.find("abc"), 0U);
    EXPECT_EQ(index.find("bc", 2), 4U);
    EXPECT_EQ(index.find("bc", 5), nowhere);
    EXPECT_EQ(index.find("c", 6), nowhere);
    EXPECT_EQ(index.find("x"), nowhere);
    EXPECT_EQ(index.find("abcabca"), nowhere);
}

TEST(ByteIndex, FindsAnEmptyPieceAtOnce) {
    EXPECT_EQ(ByteIndex("abc").find("", 2), 2U);
    EXPECT_EQ(ByteIndex("abc").find("", 3), 3U);
    EXPECT_EQ(ByteIndex("").find(""), 0U);
}

TEST(ByteIndex, FindsTheSameAsAPlainSearch) {
    std::mt19937 random(9);
    const auto word = [&random](std::size_t longest) {
        std::string result;
        for (auto length = random() % (longest + 1); length > 0; --length)
            result += static_cast<char>('a' + random() % 3);
        return result;
    };
    for (int round = 0; round < 20000; ++round) {
        // Up to 200 characters of three kinds: some with few positions, some with many.
        const std::string text = word(random() % 2 ? 20 : 200);
        const std::string piece = word(12);
        const std::size_t from = random() % (text.size() + 1);
        EXPECT_EQ(ByteIndex(text).find(piece, from), text.find(piece, from))
            << text << ' ' << piece << ' ' << from;
    }
}

TEST(ByteIndex, SearchesRepetitiveText) {
    const ByteIndex index(std::string(1000000, 'a') + "b");
    EXPECT_EQ(index.find(std::string(10000, 'a') + "b"), 990000U);
    EXPECT_EQ(index.find(std::string(10000, 'a') + "ba"), nowhere);
    EXPECT_EQ(index.find("b" + std::string(10000, 'a')), nowhere);
}

} // namespace fernhop
