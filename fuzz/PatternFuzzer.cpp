// Compares the fast paths for ASCII with the general path and an independent oracle, for rule patterns and
// URLs of any bytes. The input is a pattern, then, after the first newline, the text of a URL.

#include "platform/Ascii.h"
#include "platform/Text.h"
#include "rules/UrlMatcher.h"
#include "rules/WildcardOracle.h"
#include "rules/WildcardPattern.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using namespace fernhop;

void require(bool holds) {
    if (!holds)
        std::abort();
}

void checkWildcard(std::string_view text, std::string_view pattern) {
    const std::string lowercased = ascii::lowercased(pattern);
    const bool matches = unicodeWildcardMatches(text, lowercased);
    if (!ascii::isAscii(text) || !ascii::isAscii(pattern))
        return;
    require(tests::wildcardOracle(text, lowercased) == matches);
    require(asciiWildcardMatches(ByteIndex(std::string(text)), ScannedPattern(pattern)) == matches);
}

/// The rule test, step by step and without fast paths.
bool ruleMatches(std::string_view url, std::string_view pattern, const text::Locale &locale) {
    const std::string_view trimmed = text::trimmed(pattern);
    if (trimmed.empty())
        return false;
    const std::string lowercasedUrl = text::lowercased(url);
    const std::string lowercased = text::lowercased(trimmed);
    if (text::firstOccurrence(lowercased, "*", 0))
        return unicodeWildcardMatches(lowercasedUrl, lowercased);
    return text::localizedCaseInsensitiveContains(lowercasedUrl, trimmed, locale);
}

void checkRule(std::string_view url, std::string_view pattern) {
    for (const char *name : {"en_US.UTF-8", "tr_TR.UTF-8", "lt_LT.UTF-8"}) {
        const text::Locale locale{name};
        require(UrlMatcher(url, locale).matches(pattern) == ruleMatches(url, pattern, locale));
    }
}

void checkOccurrences(std::string_view text, std::string_view piece) {
    if (const auto found = text::firstOccurrence(text, piece, 0)) {
        require(found->start < found->end && found->end <= text.size());
        require(text::caseInsensitiveEqual(text.substr(found->start, found->end - found->start), piece));
        require(text::localizedCaseInsensitiveContains(text, piece, {"en"}));
    }
    require(text::caseInsensitiveEqual(text, text));
    require(text::caseInsensitiveEqual(text, piece) == text::caseInsensitiveEqual(piece, text));
    require(text::trimmed(text::trimmed(text)) == text::trimmed(text));
}

void checkOrder(std::string_view left, std::string_view right) {
    const text::Locale locale{"en_US.UTF-8"};
    const auto order = text::localizedCaseInsensitiveCompare(left, right, locale);
    require(order == 0 <=> text::localizedCaseInsensitiveCompare(right, left, locale));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char *>(data), size);
    const auto newline = input.find('\n');
    const std::string_view pattern = input.substr(0, newline);
    const std::string_view url = newline == std::string_view::npos ? "" : input.substr(newline + 1);
    checkWildcard(url, pattern);
    checkRule(url, pattern);
    checkOccurrences(url, pattern);
    checkOrder(url, pattern);
    return 0;
}
