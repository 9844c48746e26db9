#include "platform/linux/text/Collation.h"

#include "platform/Ascii.h"
#include "platform/Text.h"
#include "platform/UnicodeText.h"
#include "platform/linux/text/ComparisonForm.h"

#include <unicode/coll.h>

#include <algorithm>
#include <array>
#include <memory>

namespace fernhop::text {

namespace {

/// The printable ASCII characters in the root order, letter case aside. Control characters are left out: most
/// of them count for nothing in a comparison, and no name holds them.
constexpr std::string_view rootOrder =
    " _-,;:!?.'\"()[]{}@*/\\&#%`^+<=>|~$0123456789abcdefghijklmnopqrstuvwxyz";

constexpr unsigned char unknown = 0;

constexpr std::array<unsigned char, 256> makeRanks() {
    std::array<unsigned char, 256> ranks{};
    for (std::size_t index = 0; index < rootOrder.size(); ++index) {
        const char character = rootOrder[index];
        ranks[static_cast<unsigned char>(character)] = static_cast<unsigned char>(index + 1);
        if (character >= 'a' && character <= 'z')
            ranks[static_cast<unsigned char>(character - 'a' + 'A')] = static_cast<unsigned char>(index + 1);
    }
    return ranks;
}

constexpr auto ranks = makeRanks();

unsigned char rankAt(std::string_view text, std::size_t position) {
    return ranks[static_cast<unsigned char>(text[position])];
}

/// Languages whose CLDR collation leaves ASCII letters where the root has them. ("cs" is not one: "ch"
/// follows "h" there.) Not all of them: the ones whose users are many.
constexpr std::string_view languagesInRootOrder[] = {
    "",   "ar", "bg", "ca", "de", "el", "en", "es", "fa", "fr", "gl", "he", "hi",
    "id", "it", "ja", "ko", "nl", "pl", "pt", "ro", "ru", "sl", "uk", "vi", "zh",
};

/// Whether the name says no more than a language, a two-letter region and an encoding. Variants and keywords
/// can choose another order.
bool isPlain(std::string_view localeName) {
    if (localeName.find('@') != std::string_view::npos)
        return false;
    localeName = localeName.substr(0, localeName.find('.'));
    const auto separator = localeName.find_first_of("_-");
    return separator == std::string_view::npos || localeName.size() - separator == 3;
}

using CollatorPointer = std::unique_ptr<icu::Collator>;

CollatorPointer openCollator(const std::string &localeName) {
    const bool namesNoLanguage = languageOf(localeName).empty();
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale(namesNoLanguage ? "" : localeName.c_str());
    CollatorPointer collator(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status))
        return nullptr;
    // Accents are the second level, letter case would be the third.
    collator->setStrength(icu::Collator::SECONDARY);
    return collator;
}

/// The collator of the locale asked for last is kept, as opening one costs far more than using it. Null when
/// ICU has no data at all.
const icu::Collator *collatorFor(const Locale &locale) {
    thread_local std::optional<std::string> openedFor;
    thread_local CollatorPointer collator;
    if (openedFor != locale.name) {
        collator = openCollator(locale.name);
        openedFor = locale.name;
    }
    return collator.get();
}

} // namespace

bool sortsAsciiInRootOrder(std::string_view localeName) {
    return isPlain(localeName) &&
           std::ranges::find(languagesInRootOrder, languageOf(localeName)) != std::end(languagesInRootOrder);
}

std::optional<std::weak_ordering> asciiOrder(std::string_view left, std::string_view right) {
    // Nothing in the root order begins with one ASCII character and goes on with another, so character after
    // character is compared; the first difference decides unless a mark may follow it, and all that precedes
    // it is equal up to letter case.
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t position = 0; position < common; ++position) {
        const unsigned char leftRank = rankAt(left, position);
        const unsigned char rightRank = rankAt(right, position);
        if (leftRank == unknown || rightRank == unknown)
            return std::nullopt;
        if (leftRank != rightRank) {
            const bool leftDecided = position + 1 == left.size() || rankAt(left, position + 1) != unknown;
            const bool rightDecided = position + 1 == right.size() || rankAt(right, position + 1) != unknown;
            return leftDecided && rightDecided ? std::optional<std::weak_ordering>(leftRank <=> rightRank)
                                               : std::nullopt;
        }
    }
    if (left.size() == right.size())
        return std::weak_ordering::equivalent;
    const std::string_view longer = left.size() > right.size() ? left : right;
    if (rankAt(longer, common) == unknown)
        return std::nullopt;
    return left.size() <=> right.size();
}

std::weak_ordering localizedCaseInsensitiveCompare(std::string_view left, std::string_view right,
                                                   const Locale &locale) {
    if (sortsAsciiInRootOrder(locale.name))
        if (const auto order = asciiOrder(left, right))
            return *order;

    const icu::Collator *collator = collatorFor(locale);
    if (!collator)
        return lowercased(left) <=> lowercased(right);
    const std::u16string leftUnits = toUtf16(left);
    const std::u16string rightUnits = toUtf16(right);
    UErrorCode status = U_ZERO_ERROR;
    return collator->compare(leftUnits.data(), static_cast<int32_t>(leftUnits.size()), rightUnits.data(),
                             static_cast<int32_t>(rightUnits.size()), status) <=> UCOL_EQUAL;
}

} // namespace fernhop::text
