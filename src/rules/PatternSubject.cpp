#include "rules/PatternSubject.h"

#include "platform/Ascii.h"
#include "rules/LowercasePattern.h"
#include "rules/WildcardPattern.h"

namespace fernhop {

PatternSubject::PatternSubject(const Url &url, const text::Locale &userLocale)
    : PatternSubject(url.absoluteString(), userLocale) {}

// "I" is the only ASCII letter whose partner differs between languages.
PatternSubject::PatternSubject(std::string_view absoluteString, const text::Locale &userLocale)
    : locale(userLocale), text(text::lowercased(absoluteString)),
      localePairsAsciiLetters(text::localizedCaseInsensitiveContains("I", "i", userLocale)) {
    if (ascii::isAscii(text))
        index.emplace(text);
}

bool PatternSubject::matches(std::string_view pattern) const {
    pattern = text::trimmed(pattern);
    if (pattern.empty())
        return false;
    if (!index)
        return matchesAsUnicode(pattern);

    const LowercasePattern lowercased(pattern);
    if (!lowercased.isAscii())
        return matchesAsUnicode(pattern);
    if (lowercased.holdsStar())
        return asciiWildcardMatches(*index, lowercased);
    if (localePairsAsciiLetters)
        return index->find(lowercased.text()) != std::string_view::npos;
    return containsInLocale(pattern);
}

bool PatternSubject::matchesAsUnicode(std::string_view pattern) const {
    const std::string lowercased = text::lowercased(pattern);
    if (text::firstOccurrence(lowercased, "*", 0))
        return unicodeWildcardMatches(text, lowercased);
    return containsInLocale(pattern);
}

bool PatternSubject::containsInLocale(std::string_view pattern) const {
    return text::localizedCaseInsensitiveContains(text, pattern, locale);
}

} // namespace fernhop
