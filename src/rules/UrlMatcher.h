#pragma once

#include "platform/Text.h"
#include "platform/Url.h"
#include "rules/ByteIndex.h"

#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// Tests the patterns of URL rules against one URL. What depends on the URL alone is computed once.
class UrlMatcher {
  public:
    explicit UrlMatcher(const Url &url, const text::Locale &locale = text::Locale::current());
    /// The same for the text of a URL. Substring patterns are compared by the rules of `locale`, which must
    /// outlive this object.
    explicit UrlMatcher(std::string_view absoluteString,
                        const text::Locale &locale = text::Locale::current());

    /// Whether the pattern, trimmed of white space, matches the URL, letter case ignored. A pattern with "*"
    /// is a wildcard pattern for the whole URL, any other is a substring of it. An empty pattern matches
    /// nothing.
    [[nodiscard]] bool matches(std::string_view pattern) const;

  private:
    [[nodiscard]] bool matchesAsUnicode(std::string_view pattern) const;
    [[nodiscard]] bool containsInLocale(std::string_view pattern) const;

    const text::Locale &locale;
    std::string text;               ///< the URL in lower case
    std::optional<ByteIndex> index; ///< of `text`, where that is ASCII
    bool localePairsAsciiLetters;   ///< whether the locale pairs ASCII letters as `index` does
};

} // namespace fernhop
