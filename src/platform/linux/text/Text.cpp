#include "platform/Text.h"

#include "platform/Ascii.h"
#include "platform/UnicodeText.h"
#include "platform/linux/text/ComparisonForm.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace fernhop::text {

namespace {

/// The locale of a category, by the name of its variable.
Locale readEnvironment(const char *category) {
    for (const char *variable : {"LC_ALL", category, "LANG"}) {
        const char *value = std::getenv(variable);
        if (value && *value)
            return {value};
    }
    return {};
}

bool areAscii(std::string_view left, std::string_view right) {
    return ascii::isAscii(left) && ascii::isAscii(right);
}

std::optional<Occurrence> firstPlace(std::string_view text, std::string_view piece, std::size_t from) {
    const auto start = piece.empty() ? std::string_view::npos : text.find(piece, from);
    return start == std::string_view::npos ? std::nullopt
                                           : std::optional(Occurrence{start, start + piece.size()});
}

/// Whether the form of a text without letter case is its ASCII letters in lower case: in Turkic languages the
/// partner of "I" is no ASCII letter.
bool hasAsciiForm(std::string_view text, CaseRules rules) {
    return ascii::isAscii(text) && (rules != CaseRules::turkic || text.find('I') == std::string_view::npos);
}

bool isWhitespaceOrNewline(char32_t character) {
    if (character < 0x80)
        return character == ' ' || (character >= '\t' && character <= '\r');
    return character == 0x85 || (U_GET_GC_MASK(static_cast<UChar32>(character)) & U_GC_Z_MASK) != 0;
}

/// Whether a byte that begins or ends a text shows at once that nothing is to be trimmed there.
bool isVisibleAscii(char byte) {
    return byte > ' ' && byte < 0x7F;
}

} // namespace

const Locale &Locale::current() {
    static const Locale locale = readEnvironment("LC_CTYPE");
    return locale;
}

const Locale &Locale::currentForSorting() {
    static const Locale locale = readEnvironment("LC_COLLATE");
    return locale;
}

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
    if (ascii::isAscii(text))
        return text.ends_with(ComparisonForm::plain(piece).bytes());
    return ComparisonForm::plain(text).endsWith(ComparisonForm::plain(piece));
}

bool localizedCaseInsensitiveContains(std::string_view text, std::string_view pattern, const Locale &locale) {
    const CaseRules rules = caseRules(locale);
    if (!hasAsciiForm(text, rules))
        return ComparisonForm::caseless(text, rules)
            .find(ComparisonForm::caseless(pattern, rules), 0)
            .has_value();
    const std::string piece = hasAsciiForm(pattern, rules) ? ascii::lowercased(pattern)
                                                           : ComparisonForm::caseless(pattern, rules).bytes();
    return firstPlace(ascii::lowercased(text), piece, 0).has_value();
}

bool caseInsensitiveEqual(std::string_view left, std::string_view right) {
    if (!areAscii(left, right))
        return ComparisonForm::caseless(left, CaseRules::usual) ==
               ComparisonForm::caseless(right, CaseRules::usual);
    return std::ranges::equal(
        left, right, {}, [](char character) { return ascii::lowercased(character); },
        [](char character) { return ascii::lowercased(character); });
}

std::string lowercased(std::string_view text) {
    if (ascii::isAscii(text))
        return ascii::lowercased(text);

    const std::u16string source = toUtf16(text);
    icu::UnicodeString lower(source.data(), static_cast<int32_t>(source.size()));
    lower.toLower(icu::Locale::getRoot());
    return toUtf8({lower.getBuffer(), static_cast<std::size_t>(lower.length())});
}

std::string_view trimmed(std::string_view text) {
    if (!text.empty() && isVisibleAscii(text.front()) && isVisibleAscii(text.back()))
        return text;
    while (!text.empty()) {
        const Character first = characterAt(text, 0);
        if (!isWhitespaceOrNewline(first.value))
            break;
        text.remove_prefix(first.length);
    }
    while (!text.empty()) {
        const Character last = lastCharacter(text);
        if (!isWhitespaceOrNewline(last.value))
            break;
        text.remove_suffix(last.length);
    }
    return text;
}

std::string makeUuid() {
    std::random_device random;
    std::array<char, 37> text{};
    // RFC 4122: the version, 4, begins the third group, and the variant the fourth.
    std::snprintf(text.data(), text.size(), "%08X-%04X-%04X-%04X-%04X%08X", random(), random() & 0xFFFFU,
                  (random() & 0x0FFFU) | 0x4000U, (random() & 0x3FFFU) | 0x8000U, random() & 0xFFFFU,
                  random());
    return text.data();
}

} // namespace fernhop::text
