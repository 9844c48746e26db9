#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The text operations that need Unicode knowledge. Stateless; the implementation is chosen at link time.
/// Text is UTF-8; a byte that is not valid UTF-8 is a character of its own that equals only itself. All
/// functions may be called on any thread.
namespace fernhop::text {

/// The language rules of a locale-aware comparison, by a BCP 47 or POSIX locale name ("tr_TR.UTF-8", "de").
struct Locale {
    std::string name;

    /// The user's locale when the process started (LC_ALL, LC_CTYPE, LANG on a POSIX system).
    [[nodiscard]] static const Locale &current();

    /// The one whose sorting order the user wanted then (LC_ALL, LC_COLLATE, LANG on a POSIX system).
    [[nodiscard]] static const Locale &currentForSorting();
};

/// The position of an occurrence in a text, in bytes.
struct Occurrence {
    std::size_t start;
    std::size_t end;
};

/// `text` without leading and trailing Unicode white space and newlines (categories Z*, U+0009 to U+000D,
/// U+0085). The result is a view into `text`.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// `text` in lower case by the locale-independent Unicode mapping (full mapping, context of the final sigma
/// included).
[[nodiscard]] std::string lowercased(std::string_view text);

/// The leftmost occurrence of `piece` (not empty) in `text` at or after byte `from`, by a plain comparison in
/// which canonically equivalent sequences are equal. An occurrence covers whole combining sequences only: "e"
/// does not occur in "é", whether composed or decomposed.
[[nodiscard]] std::optional<Occurrence> firstOccurrence(std::string_view text, std::string_view piece,
                                                        std::size_t from);

/// Whether `text` ends with `piece`, by the comparison of `firstOccurrence`.
[[nodiscard]] bool endsWith(std::string_view text, std::string_view piece);

/// Whether `text` contains `pattern`. Letter case is ignored by the rules of the locale (in Turkish "I" and
/// "i" differ); canonically equivalent sequences are equal. An empty pattern is contained in no text.
[[nodiscard]] bool localizedCaseInsensitiveContains(std::string_view text, std::string_view pattern,
                                                    const Locale &locale = Locale::current());

/// Whether two texts are equal, independent of a locale. Letter case is ignored; canonically equivalent
/// sequences are equal.
[[nodiscard]] bool caseInsensitiveEqual(std::string_view left, std::string_view right);

/// Compares two texts in the locale's sorting order, letter case ignored. Texts that differ only in case
/// ("Safari", "safari") are `equivalent`, so a stable sort keeps their order.
[[nodiscard]] std::weak_ordering
localizedCaseInsensitiveCompare(std::string_view left, std::string_view right,
                                const Locale &locale = Locale::currentForSorting());

/// A fresh random UUID: 36 characters, upper-case hexadecimal digits in groups 8-4-4-4-12.
[[nodiscard]] std::string makeUuid();

} // namespace fernhop::text
