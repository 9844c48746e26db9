#include "platform/Ascii.h"
#include "platform/Text.h"
#include "platform/linux/text/ComparisonForm.h"

#include <gtest/gtest.h>

#include <random>

namespace fernhop::text {

namespace {

const Locale english{"en_US.UTF-8"};
const Locale turkish{"tr_TR.UTF-8"};
const Locale azeri{"az_AZ"};
const Locale lithuanian{"lt_LT"};

std::optional<std::pair<std::size_t, std::size_t>> found(std::string_view text, std::string_view piece,
                                                         std::size_t from = 0) {
    const auto occurrence = firstOccurrence(text, piece, from);
    return occurrence ? std::optional(std::pair(occurrence->start, occurrence->end)) : std::nullopt;
}

std::optional<std::pair<std::size_t, std::size_t>> at(std::size_t start, std::size_t end) {
    return std::pair(start, end);
}

constexpr auto nowhere = std::nullopt;

bool contains(std::string_view text, std::string_view pattern, const Locale &locale = english) {
    return localizedCaseInsensitiveContains(text, pattern, locale);
}

} // namespace

TEST(SearchFastPath, AnswersAsTheGeneralOneDoes) {
    std::mt19937 random(7);
    const auto word = [&random](std::size_t longest) {
        constexpr std::string_view letters = "aAbBiI*/";
        std::string result;
        for (auto length = random() % (longest + 1); length > 0; --length)
            result += letters[random() % letters.size()];
        return result;
    };
    for (int round = 0; round < 20000; ++round) {
        const std::string text = word(10);
        const std::string piece = word(3);
        const std::size_t from = random() % 12;
        const auto general = ComparisonForm::plain(text).find(ComparisonForm::plain(piece), from);
        EXPECT_EQ(found(text, piece, from), general ? at(general->start, general->end) : nowhere);
        EXPECT_EQ(endsWith(text, piece), ComparisonForm::plain(text).endsWith(ComparisonForm::plain(piece)));
        for (const Locale &locale : {english, turkish, lithuanian}) {
            const CaseRules rules = caseRules(locale);
            const auto folded =
                ComparisonForm::caseless(text, rules).find(ComparisonForm::caseless(piece, rules), 0);
            EXPECT_EQ(contains(text, piece, locale), folded.has_value())
                << text << ' ' << piece << locale.name;
        }
        EXPECT_EQ(caseInsensitiveEqual(text, piece), ComparisonForm::caseless(text, CaseRules::usual) ==
                                                         ComparisonForm::caseless(piece, CaseRules::usual));
    }
}

TEST(SearchFastPath, KnowsEveryAsciiPair) {
    for (int left = 0; left < 0x80; ++left)
        for (int right = 0; right < 0x80; ++right) {
            const std::string a(1, static_cast<char>(left));
            const std::string b(1, static_cast<char>(right));
            for (const Locale &locale : {english, turkish, azeri, lithuanian}) {
                const CaseRules rules = caseRules(locale);
                EXPECT_EQ(contains(a, b, locale),
                          ComparisonForm::caseless(a, rules) == ComparisonForm::caseless(b, rules));
            }
        }
}

// Systems differ in what they take the zero-width space for.
TEST(TrimmingByCategory, KeepsTheZeroWidthSpace) {
    EXPECT_EQ(trimmed("\u200B"), "\u200B");
}

} // namespace fernhop::text
