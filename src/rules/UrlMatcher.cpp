#include "rules/UrlMatcher.h"

#include "platform/Ascii.h"
#include "rules/ScannedPattern.h"
#include "rules/WildcardPattern.h"

namespace fernhop {

UrlMatcher::UrlMatcher(const Url &url, const text::Locale &userLocale)
    : UrlMatcher(url.absoluteString(), userLocale) {}

// "I" is the only ASCII letter whose partner differs between languages.
UrlMatcher::UrlMatcher(std::string_view absoluteString, const text::Locale &userLocale)
    : locale(userLocale), text(text::lowercased(absoluteString)),
      localePairsAsciiLetters(text::localizedCaseInsensitiveContains("I", "i", userLocale)) {
    if (ascii::isAscii(text))
        index.emplace(text);
}

bool UrlMatcher::matches(std::string_view pattern) const {
    pattern = text::trimmed(pattern);
    if (pattern.empty())
        return false;
    if (!index)
        return matchesAsUnicode(pattern);

    const ScannedPattern lowercased(pattern);
    if (!lowercased.isAscii())
        return matchesAsUnicode(pattern);
    if (lowercased.hasStar())
        return asciiWildcardMatches(*index, lowercased);
    if (localePairsAsciiLetters)
        return index->find(lowercased.text()) != std::string_view::npos;
    return containsInLocale(pattern);
}

bool UrlMatcher::matchesAsUnicode(std::string_view pattern) const {
    // Most rules have no "*" at all, which their bytes tell.
    if (pattern.find('*') != std::string_view::npos) {
        const std::string lowercased = text::lowercased(pattern);
        if (text::firstOccurrence(lowercased, "*", 0))
            return unicodeWildcardMatches(text, lowercased);
    }
    return containsInLocale(pattern);
}

bool UrlMatcher::containsInLocale(std::string_view pattern) const {
    return text::localizedCaseInsensitiveContains(text, pattern, locale);
}

} // namespace fernhop
