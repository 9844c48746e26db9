#include "platform/Ascii.h"
#include "platform/Text.h"
#include "platform/linux/text/ComparisonForm.h"

#include <algorithm>

namespace fernhop::text {

namespace {

bool areAscii(std::string_view left, std::string_view right) {
    return ascii::isAscii(left) && ascii::isAscii(right);
}

/// ASCII text as two languages' worth of case rules see it: in the Turkic ones the partner of "I" is no ASCII
/// letter, so that it equals only itself.
std::string foldedAscii(std::string_view text, CaseRules rules) {
    std::string result(text);
    for (char &character : result)
        if (rules != CaseRules::turkic || character != 'I')
            character = ascii::lowercased(character);
    return result;
}

} // namespace

std::optional<Occurrence> firstOccurrence(std::string_view text, std::string_view piece, std::size_t from) {
    if (!areAscii(text, piece))
        return ComparisonForm::plain(text).find(ComparisonForm::plain(piece), from);
    const auto start = piece.empty() ? std::string_view::npos : text.find(piece, from);
    if (start == std::string_view::npos)
        return std::nullopt;
    return Occurrence{start, start + piece.size()};
}

bool endsWith(std::string_view text, std::string_view piece) {
    if (areAscii(text, piece))
        return text.ends_with(piece);
    return ComparisonForm::plain(text).endsWith(ComparisonForm::plain(piece));
}

bool localizedCaseInsensitiveContains(std::string_view text, std::string_view pattern, const Locale &locale) {
    const CaseRules rules = caseRules(locale);
    if (!areAscii(text, pattern))
        return ComparisonForm::caseless(text, rules)
            .find(ComparisonForm::caseless(pattern, rules), 0)
            .has_value();
    return !pattern.empty() &&
           foldedAscii(text, rules).find(foldedAscii(pattern, rules)) != std::string::npos;
}

bool caseInsensitiveEqual(std::string_view left, std::string_view right) {
    if (!areAscii(left, right))
        return ComparisonForm::caseless(left, CaseRules::usual) ==
               ComparisonForm::caseless(right, CaseRules::usual);
    return std::ranges::equal(
        left, right, {}, [](char character) { return ascii::lowercased(character); },
        [](char character) { return ascii::lowercased(character); });
}

} // namespace fernhop::text
