#include "platform/Text.h"
#include "platform/UnicodeText.h"
#include "platform/linux/text/AsciiOrder.h"
#include "platform/linux/text/CaseRules.h"

#include <unicode/ucol.h>

#include <memory>

namespace fernhop::text {

namespace {

struct CloseCollator {
    void operator()(UCollator *collator) const { ucol_close(collator); }
};
using CollatorPointer = std::unique_ptr<UCollator, CloseCollator>;

CollatorPointer openCollator(const std::string &localeName) {
    const bool namesNoLanguage = languageOf(localeName).empty();
    UErrorCode status = U_ZERO_ERROR;
    CollatorPointer collator(ucol_open(namesNoLanguage ? "" : localeName.c_str(), &status));
    if (U_FAILURE(status))
        return nullptr;
    // Accents are the second level, letter case would be the third.
    ucol_setStrength(collator.get(), UCOL_SECONDARY);
    return collator;
}

/// The collator of the locale asked for last is kept, as opening one costs far more than using it. Null when
/// ICU has no data at all.
const UCollator *collatorFor(const Locale &locale) {
    thread_local std::optional<std::string> openedFor;
    thread_local CollatorPointer collator;
    if (openedFor != locale.name) {
        collator = openCollator(locale.name);
        openedFor = locale.name;
    }
    return collator.get();
}

std::weak_ordering ordering(UCollationResult result) {
    return result == UCOL_LESS      ? std::weak_ordering::less
           : result == UCOL_GREATER ? std::weak_ordering::greater
                                    : std::weak_ordering::equivalent;
}

} // namespace

std::weak_ordering localizedCaseInsensitiveCompare(std::string_view left, std::string_view right,
                                                   const Locale &locale) {
    if (sortsAsciiInRootOrder(locale.name))
        if (const auto order = asciiOrder(left, right))
            return *order;

    const UCollator *collator = collatorFor(locale);
    if (!collator)
        return lowercased(left) <=> lowercased(right);
    const std::u16string leftUnits = toUtf16(left);
    const std::u16string rightUnits = toUtf16(right);
    return ordering(ucol_strcoll(collator, leftUnits.data(), static_cast<int32_t>(leftUnits.size()),
                                 rightUnits.data(), static_cast<int32_t>(rightUnits.size())));
}

} // namespace fernhop::text
