#include "platform/linux/base/LocaleNames.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using Names = std::vector<std::string>;

TEST(LocaleNamesTest, TheBestNameStandsFirst) {
    EXPECT_EQ(localeNames("sr_YU.UTF-8@Latn"), (Names{"sr_YU@Latn", "sr_YU", "sr@Latn", "sr"}));
    EXPECT_EQ(localeNames("sr_YU"), (Names{"sr_YU", "sr"}));
    EXPECT_EQ(localeNames("sr@Latn"), (Names{"sr@Latn", "sr"}));
    EXPECT_EQ(localeNames("sr"), Names{"sr"});
    EXPECT_EQ(localeNames("de_DE.ISO-8859-15@euro"), (Names{"de_DE@euro", "de_DE", "de@euro", "de"}));
}

TEST(LocaleNamesTest, TheLocaleWithoutLanguageHasNoNames) {
    for (const auto *locale : {"", "C", "C.UTF-8", "POSIX", ".UTF-8", "@x", "_DE"})
        EXPECT_EQ(localeNames(locale), Names{}) << locale;
}

TEST(LocaleNamesTest, AListGivesTheNamesOfEach) {
    EXPECT_EQ(localeNamesOfList("de_AT:fr::C:en_GB"), (Names{"de_AT", "de", "fr", "en_GB", "en"}));
    EXPECT_EQ(localeNamesOfList(""), Names{});
    EXPECT_EQ(localeNamesOfList(":"), Names{});
}

} // namespace
} // namespace fernhop::freedesktop
