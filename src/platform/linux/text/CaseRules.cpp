#include "platform/linux/text/CaseRules.h"

#include "platform/Ascii.h"

#include <cstdlib>

namespace fernhop::text {

namespace {

Locale readEnvironment() {
    for (const char *variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char *value = std::getenv(variable);
        if (value && *value)
            return {value};
    }
    return {};
}

} // namespace

const Locale &Locale::current() {
    static const Locale locale = readEnvironment();
    return locale;
}

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

} // namespace fernhop::text
