#include "platform/Ascii.h"
#include "platform/Text.h"
#include "platform/linux/text/ComparisonForm.h"

#include <algorithm>

namespace fernhop::text {

namespace {

bool areAscii(std::string_view left, std::string_view right) {
    return ascii::isAscii(left) && ascii::isAscii(right);
}

std::optional<Occurrence> firstPlace(std::string_view text, std::string_view piece, std::size_t from) {
    const auto start = piece.empty() ? std::string_view::npos : text.find(piece, from);
    return start == std::string_view::npos ? std::nullopt
                                           : std::optional(Occurrence{start, start + piece.size()});
}

/// ASCII text without letter case among ASCII: in Turkic languages the partner of "I" is no ASCII letter, so
/// that it equals only itself.
std::string foldedAscii(std::string_view text, CaseRules rules) {
    std::string result(text);
    for (char &character : result)
        if (rules != CaseRules::turkic || character != 'I')
            character = ascii::lowercased(character);
    return result;
}

} // namespace

// ASCII text is its own form, so that a URL need not be brought into it for each pattern that is not ASCII.
std::optional<Occurrence> firstOccurrence(std::string_view text, std::string_view piece, std::size_t from) {
    if (areAscii(text, piece))
        return firstPlace(text, piece, from);
    if (ascii::isAscii(text))
        return firstPlace(text, ComparisonForm::plain(piece).bytes(), from);
    return ComparisonForm::plain(text).find(ComparisonForm::plain(piece), from);
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
