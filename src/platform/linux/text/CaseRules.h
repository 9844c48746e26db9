#pragma once

#include "platform/Text.h"

#include <string>
#include <string_view>

namespace fernhop::text {

/// How a language pairs capital and small letters. Only the dots of "i" and "j" differ between languages.
enum class CaseRules {
    usual,
    turkic,     ///< Turkish, Azerbaijani: "I" belongs to "ı", "İ" to "i"
    lithuanian, ///< a dot is kept under further accents, so "i̇̀" belongs to "Ì"
};

/// The rules of the locale's language.
[[nodiscard]] CaseRules caseRules(const Locale &locale);

/// The language of a POSIX or BCP 47 locale name in lower case ("tr" of "tr_TR.UTF-8"). Empty for "C" and
/// "POSIX", which name none.
[[nodiscard]] std::string languageOf(std::string_view localeName);

} // namespace fernhop::text
