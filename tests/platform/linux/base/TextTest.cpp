#include "platform/linux/base/Text.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace std::string_view_literals;
using Pieces = std::vector<std::string_view>;

TEST(Text, IsTrimmedOfAsciiWhiteSpace) {
    EXPECT_EQ(trimmed(" \t\r\n\v\fa b \n"), "a b");
    EXPECT_EQ(trimmed(" \n"), "");
    EXPECT_EQ(trimmed("\xC2\xA0"), "\xC2\xA0") << "a no-break space";
}

TEST(Text, IsSplitIntoPieces) {
    EXPECT_EQ(pieces("a::b:", ':'), (Pieces{"a", "", "b"}));
    EXPECT_EQ(pieces("", ':'), Pieces{});
    EXPECT_EQ(pieces(":", ':'), Pieces{""});
    EXPECT_EQ(pieces("a\0\0b"sv, '\0'), (Pieces{"a", "", "b"}));
    EXPECT_EQ(nonEmptyPieces(";a;;b;", ';'), (Pieces{"a", "b"}));
}

TEST(Text, NamesTheFileOfAPath) {
    EXPECT_EQ(fileNameOf("/usr/bin/env"), "env");
    EXPECT_EQ(fileNameOf("env"), "env");
    EXPECT_EQ(fileNameOf("/usr/"), "");
}

} // namespace
} // namespace fernhop::freedesktop
