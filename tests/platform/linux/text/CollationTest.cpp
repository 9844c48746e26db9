#include "platform/linux/text/Collation.h"

#include "platform/Text.h"
#include "platform/UnicodeText.h"

#include <gtest/gtest.h>
#include <unicode/ucol.h>
#include <unicode/uset.h>

#include <algorithm>
#include <memory>
#include <random>

namespace fernhop::text {

namespace {

constexpr const char *localesWithFastPath[] = {
    "C",  "ar", "bg", "ca", "de",    "el",    "en",    "es",    "fa",    "fr",   "gl",
    "he", "hi", "id", "it", "ja",    "ko",    "nl",    "pl",    "pt",    "ro",   "ru",
    "sl", "uk", "vi", "zh", "zh_TW", "en_US", "es_MX", "pt_BR", "de_AT", "fr_CA"};

struct CloseCollator {
    void operator()(UCollator *collator) const { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, CloseCollator>;

Collator open(const std::string &locale) {
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(ucol_open(locale == "C" ? "" : locale.c_str(), &status));
    ucol_setStrength(collator.get(), UCOL_SECONDARY);
    return collator;
}

std::weak_ordering compare(const Collator &collator, std::string_view left, std::string_view right) {
    const std::u16string a = toUtf16(left);
    const std::u16string b = toUtf16(right);
    const auto result = ucol_strcoll(collator.get(), a.data(), static_cast<int32_t>(a.size()), b.data(),
                                     static_cast<int32_t>(b.size()));
    return static_cast<int>(result) <=> 0;
}

/// Whether the collator orders a sequence of several ASCII characters as one.
bool contractsAscii(const Collator &collator) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<USet, decltype(&uset_close)> contractions(uset_openEmpty(), uset_close);
    ucol_getContractionsAndExpansions(collator.get(), contractions.get(), nullptr, true, &status);
    for (int32_t item = 0; item < uset_getItemCount(contractions.get()); ++item) {
        UChar text[64];
        UChar32 first = 0;
        UChar32 last = 0;
        UErrorCode itemStatus = U_ZERO_ERROR;
        const int32_t length = uset_getItem(contractions.get(), item, &first, &last, text, 64, &itemStatus);
        if (length >= 2 && std::all_of(text, text + length, [](UChar unit) { return unit < 0x80; }))
            return true;
    }
    return false;
}

} // namespace

TEST(Collation, TakesTheRootOrderWithoutALanguage) {
    for (const char *locale : {"", "C", "C.UTF-8", "POSIX", "nonsense_XX", "-", "@@", "\xFF"}) {
        EXPECT_EQ(localizedCaseInsensitiveCompare("apple", "Banana", {locale}), std::weak_ordering::less)
            << locale;
        EXPECT_EQ(localizedCaseInsensitiveCompare("Äpfel", "Zebra", {locale}), std::weak_ordering::less)
            << locale;
    }
}

TEST(Collation, KnowsWhichLocalesSortAsciiInTheRootOrder) {
    for (const char *locale : localesWithFastPath)
        EXPECT_TRUE(sortsAsciiInRootOrder(locale)) << locale;
    for (const char *locale :
         {"cs_CZ", "da_DK", "tr_TR", "hu", "en_US_POSIX", "en_US_POSIX.UTF-8", "de@collation=x",
          "de_DE@collation=phonebook", "en-u-kn", "zz_ZZ", "es__TRADITIONAL"})
        EXPECT_FALSE(sortsAsciiInRootOrder(locale)) << locale;
    EXPECT_TRUE(sortsAsciiInRootOrder("de_DE.UTF-8"));
    EXPECT_TRUE(sortsAsciiInRootOrder("C.UTF-8"));
    EXPECT_FALSE(sortsAsciiInRootOrder("de_DE.UTF-8@euro"));
}

class AsciiCollation : public testing::TestWithParam<const char *> {};
INSTANTIATE_TEST_SUITE_P(Locales, AsciiCollation, testing::ValuesIn(localesWithFastPath),
                         [](const auto &instance) { return std::string(instance.param); });

/// Both together prove the fast path for ASCII text: the order of single characters is the same, and no
/// sequence of them has an order of its own.
TEST_P(AsciiCollation, OrdersSingleCharactersAsTheCollatorDoes) {
    const Collator collator = open(GetParam());
    EXPECT_FALSE(contractsAscii(collator));
    for (int left = 0; left < 0x80; ++left)
        for (int right = 0; right < 0x80; ++right) {
            const std::string a(1, static_cast<char>(left));
            const std::string b(1, static_cast<char>(right));
            if (const auto order = asciiOrder(a, b)) {
                EXPECT_EQ(*order, compare(collator, a, b)) << left << ' ' << right;
            }
        }
}

TEST_P(AsciiCollation, OrdersRandomTextAsTheCollatorDoes) {
    const Collator collator = open(GetParam());
    std::mt19937 random(3);
    const auto text = [&random] {
        const std::string_view pieces[] = {"a", "A",       "b", "l",      "L",    "z",  " ",      "-",
                                           "_", "~",       "0", "9",      "\x01", "\t", "\u0301", "·",
                                           "é", "е\u0306", "e", "\u0387", "\xFF", "한", "c",      "h"};
        std::string result;
        for (auto length = random() % 6; length > 0; --length)
            result += pieces[random() % std::size(pieces)];
        return result;
    };
    int decided = 0;
    for (int round = 0; round < 8000; ++round) {
        const std::string a = text();
        const std::string b = text();
        if (const auto order = asciiOrder(a, b)) {
            ++decided;
            EXPECT_EQ(*order, compare(collator, a, b)) << a << " | " << b;
        }
        EXPECT_EQ(localizedCaseInsensitiveCompare(a, b, {GetParam()}), compare(collator, a, b))
            << a << " | " << b;
    }
    EXPECT_GT(decided, 2000);
}

TEST(AsciiOrder, LeavesWhatAMarkMayChangeToTheCollator) {
    EXPECT_EQ(asciiOrder("a\u0301", "b"), std::nullopt);
    EXPECT_EQ(asciiOrder("ab", "ac\u0301"), std::nullopt);
    EXPECT_EQ(asciiOrder("a", "a\u0301"), std::nullopt);
    EXPECT_EQ(asciiOrder("a\x01", "a"), std::nullopt);
    EXPECT_EQ(asciiOrder("ab\u0301", "axé"), std::nullopt);
    EXPECT_EQ(asciiOrder("ab é", "ax é"), std::weak_ordering::less);
    EXPECT_EQ(asciiOrder("Abc", "aBC"), std::weak_ordering::equivalent);
}

} // namespace fernhop::text
