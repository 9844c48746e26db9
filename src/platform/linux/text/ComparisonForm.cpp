#include "platform/linux/text/ComparisonForm.h"

#include "platform/Ascii.h"
#include "platform/UnicodeText.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

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

/// Runs an ICU operation of the usual shape into a string that is large enough. On failure, which only want
/// of memory can bring, the text stays as it is.
template <typename Operation>
std::u16string converted(const std::u16string &text, Operation operation) {
    constexpr std::size_t mostUnitsForOne = 4;
    std::u16string result(text.size() * mostUnitsForOne, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = operation(text.data(), static_cast<int32_t>(text.size()), result.data(),
                                     static_cast<int32_t>(result.size()), &status);
    if (U_FAILURE(status))
        return text;
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::u16string decomposed(const std::u16string &text) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *normalizer = unorm2_getNFDInstance(&status);
    return converted(text, [normalizer](const UChar *source, int32_t length, UChar *target, int32_t capacity,
                                        UErrorCode *error) {
        return unorm2_normalize(normalizer, source, length, target, capacity, error);
    });
}

std::u16string folded(const std::u16string &text, std::uint32_t options) {
    return converted(text, [options](const UChar *source, int32_t length, UChar *target, int32_t capacity,
                                     UErrorCode *error) {
        return u_strFoldCase(target, capacity, source, length, options, error);
    });
}

std::u16string lowercasedInTurkish(const std::u16string &text) {
    return converted(
        text, [](const UChar *source, int32_t length, UChar *target, int32_t capacity, UErrorCode *error) {
            return u_strToLower(target, capacity, source, length, "tr", error);
        });
}

/// Without the dots that a soft-dotted letter has anyway: Lithuanian writes them when an accent follows.
std::u16string withoutSoftDots(const std::u16string &text) {
    std::u16string result;
    bool afterSoftDotted = false;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        UChar32 character = 0;
        U16_NEXT(text.data(), position, text.size(), character);
        if (character == dotAbove && afterSoftDotted)
            continue;
        const auto combiningClass = u_getCombiningClass(character);
        if (combiningClass == 0)
            afterSoftDotted = u_hasBinaryProperty(character, UCHAR_SOFT_DOTTED);
        else if (combiningClass == u_getCombiningClass(dotAbove))
            afterSoftDotted = false;
        result.append(text, start, position - start);
    }
    return result;
}

std::u16string caseFolded(const std::u16string &text, CaseRules rules) {
    switch (rules) {
    case CaseRules::turkic:
        // Lower-casing first joins "I" and a dot above to "i", wherever the dot stands in the sequence.
        return decomposed(folded(lowercasedInTurkish(decomposed(text)), U_FOLD_CASE_EXCLUDE_SPECIAL_I));
    case CaseRules::lithuanian:
        return withoutSoftDots(decomposed(folded(decomposed(text), U_FOLD_CASE_DEFAULT)));
    case CaseRules::usual:
        break;
    }
    return decomposed(folded(decomposed(text), U_FOLD_CASE_DEFAULT));
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
        if (alone)
            result.append({&*alone, 1}, start);
        else
            result.append(toUtf8(ofSequence(toUtf16(sequence))), start);
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
                [rules](const std::u16string &sequence) { return caseFolded(sequence, rules); });
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
