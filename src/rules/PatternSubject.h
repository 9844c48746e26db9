#pragma once

#include "platform/Text.h"
#include "platform/Url.h"
#include "rules/ByteIndex.h"

#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// A URL made ready to be tested against many patterns: what depends on the URL alone is done once.
class PatternSubject {
  public:
    explicit PatternSubject(const Url &url, const text::Locale &locale = text::Locale::current());
    /// The same for the text of a URL. The locale is that of substring patterns; it must outlive this object.
    explicit PatternSubject(std::string_view absoluteString,
                            const text::Locale &locale = text::Locale::current());

    /// Whether the pattern, trimmed of white space, applies to the URL, letter case ignored: with "*" as a
    /// wildcard pattern for the whole URL, otherwise as a part of it. An empty pattern applies to nothing.
    [[nodiscard]] bool matches(std::string_view pattern) const;

  private:
    [[nodiscard]] bool matchesAsUnicode(std::string_view pattern) const;
    [[nodiscard]] bool containsInLocale(std::string_view pattern) const;

    const text::Locale &locale;
    std::string text;               ///< the URL in lower case
    std::optional<ByteIndex> index; ///< of `text`, where that is ASCII
    bool localePairsAsciiLetters;   ///< whether a search by the index answers for the locale, too
};

} // namespace fernhop
