#include "routing/PatternSubject.h"

#include "platform/Ascii.h"
#include "routing/ByteSearch.h"
#include "routing/WildcardPattern.h"

#include <array>
#include <span>

namespace fernhop {

namespace {

/// Writes `text` in lower case to `target`, which is as long. False when `text` is not ASCII.
bool lowercaseAscii(std::string_view text, std::span<char> target) {
    unsigned char seen = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        seen = static_cast<unsigned char>(seen | static_cast<unsigned char>(text[index]));
        target[index] = ascii::lowercased(text[index]);
    }
    return seen < 0x80;
}

} // namespace

PatternSubject::PatternSubject(const Url &url, const text::Locale &userLocale)
    : PatternSubject(url.absoluteString(), userLocale) {}

// "I" is the only ASCII letter whose partner differs between languages.
PatternSubject::PatternSubject(std::string_view absoluteString, const text::Locale &userLocale)
    : locale(userLocale), text(text::lowercased(absoluteString)), isAscii(ascii::isAscii(text)),
      localePairsAsciiLetters(text::localizedCaseInsensitiveContains("I", "i", userLocale)) {}

bool PatternSubject::matches(std::string_view pattern) const {
    pattern = text::trimmed(pattern);
    if (pattern.empty())
        return false;
    std::array<char, 256> lowercased;
    if (isAscii && pattern.size() <= lowercased.size() && lowercaseAscii(pattern, lowercased))
        return matchesAsAscii(pattern, {lowercased.data(), pattern.size()});
    if (isAscii && ascii::isAscii(pattern))
        return matchesAsAscii(pattern, ascii::lowercased(pattern));
    return matchesAsUnicode(pattern);
}

bool PatternSubject::matchesAsAscii(std::string_view pattern, std::string_view lowercased) const {
    if (lowercased.find('*') != std::string_view::npos)
        return asciiWildcardMatches(text, lowercased);
    return localePairsAsciiLetters ? findBytes(text, lowercased) != std::string_view::npos
                                   : containsInLocale(pattern);
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
