#include "platform/linux/text/ComparisonForm.h"

#include "platform/Ascii.h"
#include "platform/UnicodeText.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace fernhop::text {

namespace {

constexpr UChar32 dotAbove = 0x0307;
constexpr UChar32 zeroWidthNonJoiner = 0x200C;
constexpr UChar32 zeroWidthJoiner = 0x200D;

UHangulSyllableType hangulType(UChar32 character) {
    return static_cast<UHangulSyllableType>(u_getIntPropertyValue(character, UCHAR_HANGUL_SYLLABLE_TYPE));
}

/// Whether two neighbours belong to one Hangul syllable, which may be spelled with one character or with
/// several.
bool joinsSyllable(UChar32 previous, UChar32 next) {
    const auto before = hangulType(previous);
    switch (hangulType(next)) {
    case U_HST_LEADING_JAMO:
    case U_HST_LV_SYLLABLE:
    case U_HST_LVT_SYLLABLE:
        return before == U_HST_LEADING_JAMO;
    case U_HST_VOWEL_JAMO:
        return before == U_HST_LEADING_JAMO || before == U_HST_VOWEL_JAMO || before == U_HST_LV_SYLLABLE;
    case U_HST_TRAILING_JAMO:
        return before != U_HST_NOT_APPLICABLE && before != U_HST_LEADING_JAMO;
    default:
        return false;
    }
}

bool continuesSequence(char32_t previous, char32_t next) {
    if (next < 0x0300)
        return false;
    const auto character = static_cast<UChar32>(next);
    return (U_GET_GC_MASK(character) & U_GC_M_MASK) != 0 || u_getCombiningClass(character) != 0 ||
           character == zeroWidthJoiner || character == zeroWidthNonJoiner ||
           joinsSyllable(static_cast<UChar32>(previous), character);
}

/// The end of the combining sequence that begins at `start`.
std::size_t sequenceEnd(std::string_view text, std::size_t start) {
    Character previous = characterAt(text, start);
    std::size_t end = start + previous.length;
    while (end < text.size()) {
        const Character next = characterAt(text, end);
        if (!continuesSequence(previous.value, next.value))
            break;
        end += next.length;
        previous = next;
    }
    return end;
}

using icu::UnicodeString;

/// On failure, which only want of memory can bring, the text stays as it is.
UnicodeString decomposed(const UnicodeString &text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2 *normalizer = icu::Normalizer2::getNFDInstance(status);
    const UnicodeString result = U_SUCCESS(status) ? normalizer->normalize(text, status) : text;
    return U_SUCCESS(status) ? result : text;
}

/// Without the dots that a soft-dotted letter has anyway: Lithuanian writes them when an accent follows.
UnicodeString withoutSoftDots(const UnicodeString &text) {
    UnicodeString result;
    bool afterSoftDotted = false;
    for (int32_t position = 0; position < text.length(); position = text.moveIndex32(position, 1)) {
        const UChar32 character = text.char32At(position);
        if (character == dotAbove && afterSoftDotted)
            continue;
        const auto combiningClass = u_getCombiningClass(character);
        if (combiningClass == 0)
            afterSoftDotted = u_hasBinaryProperty(character, UCHAR_SOFT_DOTTED);
        else if (combiningClass == u_getCombiningClass(dotAbove))
            afterSoftDotted = false;
        result.append(character);
    }
    return result;
}

UnicodeString caseFolded(const UnicodeString &text, CaseRules rules) {
    UnicodeString result = decomposed(text);
    // Lower-casing first joins "I" and a dot above to "i", wherever the dot stands in the sequence.
    if (rules == CaseRules::turkic)
        result.toLower(icu::Locale("tr")).foldCase(U_FOLD_CASE_EXCLUDE_SPECIAL_I);
    else
        result.foldCase();
    result = decomposed(result);
    return rules == CaseRules::lithuanian ? withoutSoftDots(result) : result;
}

bool isAsciiAlone(std::string_view sequence) {
    return sequence.size() == 1 && static_cast<unsigned char>(sequence.front()) < 0x80;
}

} // namespace

std::string languageOf(std::string_view localeName) {
    std::string language = ascii::lowercased(localeName.substr(0, localeName.find_first_of("_-.@")));
    return language == "c" || language == "posix" ? std::string() : language;
}

CaseRules caseRules(const Locale &locale) {
    const std::string language = languageOf(locale.name);
    if (language == "tr" || language == "tur" || language == "az" || language == "aze")
        return CaseRules::turkic;
    if (language == "lt" || language == "lit")
        return CaseRules::lithuanian;
    return CaseRules::usual;
}

void ComparisonForm::append(std::string_view sequence, std::size_t origin) {
    if (sequence.empty())
        return;
    form += sequence;
    origins.push_back(origin);
    origins.resize(form.size(), insideSequence);
}

/// `ofAscii` gives the form of an ASCII character that stands alone, or nothing when `ofSequence` is to give
/// it.
template <typename OfAscii, typename OfSequence>
ComparisonForm ComparisonForm::make(std::string_view text, OfAscii ofAscii, OfSequence ofSequence) {
    ComparisonForm result;
    result.form.reserve(text.size());
    result.origins.reserve(text.size() + 1);
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = sequenceEnd(text, start);
        const std::string_view sequence = text.substr(start, end - start);
        const std::optional<char> alone = isAsciiAlone(sequence) ? ofAscii(sequence.front()) : std::nullopt;
        if (alone) {
            result.append({&*alone, 1}, start);
        } else {
            const std::u16string units = toUtf16(sequence);
            const UnicodeString changed = ofSequence({units.data(), static_cast<int32_t>(units.size())});
            result.append(toUtf8({changed.getBuffer(), static_cast<std::size_t>(changed.length())}), start);
        }
        start = end;
    }
    result.origins.push_back(text.size());
    return result;
}

ComparisonForm ComparisonForm::plain(std::string_view text) {
    return make(
        text, [](char character) { return std::optional(character); }, decomposed);
}

ComparisonForm ComparisonForm::caseless(std::string_view text, CaseRules rules) {
    const auto ofAscii = [rules](char character) {
        const bool special = rules == CaseRules::turkic && character == 'I';
        return special ? std::nullopt : std::optional(ascii::lowercased(character));
    };
    return make(text, ofAscii,
                [rules](const UnicodeString &sequence) { return caseFolded(sequence, rules); });
}

std::optional<Occurrence> ComparisonForm::find(const ComparisonForm &piece, std::size_t from) const {
    if (piece.form.empty())
        return std::nullopt;
    for (auto start = form.find(piece.form); start != std::string::npos;
         start = form.find(piece.form, start + 1)) {
        const std::size_t origin = origins[start];
        const std::size_t end = origins[start + piece.form.size()];
        if (origin != insideSequence && end != insideSequence && origin >= from)
            return Occurrence{origin, end};
    }
    return std::nullopt;
}

bool ComparisonForm::endsWith(const ComparisonForm &piece) const {
    return form.ends_with(piece.form) && origins[form.size() - piece.form.size()] != insideSequence;
}

} // namespace fernhop::text
