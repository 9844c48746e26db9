#include "platform/Text.h"

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

} // namespace fernhop::text
