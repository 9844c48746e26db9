#include "platform/Text.h"

#include <gtest/gtest.h>

namespace fernhop::text {

namespace {

std::weak_ordering compare(std::string_view left, std::string_view right,
                           const char *locale = "en_US.UTF-8") {
    return localizedCaseInsensitiveCompare(left, right, {locale});
}

} // namespace

TEST(Collation, IgnoresLetterCaseButNotAccents) {
    EXPECT_EQ(compare("Safari", "safari"), std::weak_ordering::equivalent);
    EXPECT_EQ(compare("ÉCOLE", "école"), std::weak_ordering::equivalent);
    EXPECT_EQ(compare("é", "e\u0301"), std::weak_ordering::equivalent);
    EXPECT_EQ(compare("resume", "résumé"), std::weak_ordering::less);
    EXPECT_EQ(compare("résumé", "resume"), std::weak_ordering::greater);
}

TEST(Collation, SortsAsReadersExpect) {
    EXPECT_EQ(compare("apple", "Banana"), std::weak_ordering::less);
    EXPECT_EQ(compare("Zebra", "Äpfel"), std::weak_ordering::greater);
    EXPECT_EQ(compare("a", "ab"), std::weak_ordering::less);
    EXPECT_EQ(compare("", "a"), std::weak_ordering::less);
    EXPECT_EQ(compare("2", "a"), std::weak_ordering::less);
}

TEST(Collation, FollowsTheLocale) {
    EXPECT_EQ(compare("Äpfel", "Zebra", "de_DE.UTF-8"), std::weak_ordering::less);
    EXPECT_EQ(compare("Äpfel", "Zebra", "sv_SE.UTF-8"), std::weak_ordering::greater);
    EXPECT_EQ(compare("chata", "hora", "en"), std::weak_ordering::less);
    EXPECT_EQ(compare("chata", "hora", "cs_CZ.UTF-8"), std::weak_ordering::greater);
    EXPECT_EQ(compare("zh", "y", "et_EE"), std::weak_ordering::less);
}

TEST(Collation, DistinguishesInvalidBytes) {
    EXPECT_NE(compare("\xFF", "\xFE"), std::weak_ordering::equivalent);
    EXPECT_EQ(compare("a\xFF", "A\xFF"), std::weak_ordering::equivalent);
    EXPECT_NE(compare("\xFF", "\uFFFD"), std::weak_ordering::equivalent);
}

} // namespace fernhop::text
