#pragma once

#include "platform/Text.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// A text in the form in which it is compared: canonically decomposed and, where letter case is to be
/// ignored, case-folded, so that equal means the same bytes. It remembers where the combining sequences of
/// the text lie, since an occurrence covers whole ones only.
class ComparisonForm {
  public:
    /// The form for a comparison in which letter case counts.
    [[nodiscard]] static ComparisonForm plain(std::string_view text);
    /// The form for a comparison that ignores letter case by these rules.
    [[nodiscard]] static ComparisonForm caseless(std::string_view text, CaseRules rules);

    /// The leftmost occurrence of `piece` in the text, at or after the byte `from` of the text. The result is
    /// in bytes of the text. An empty piece occurs nowhere.
    [[nodiscard]] std::optional<Occurrence> find(const ComparisonForm &piece, std::size_t from) const;
    [[nodiscard]] bool endsWith(const ComparisonForm &piece) const;

    /// The form itself, in UTF-8.
    [[nodiscard]] const std::string &bytes() const { return form; }

    bool operator==(const ComparisonForm &other) const { return form == other.form; }

  private:
    static constexpr std::size_t insideSequence = static_cast<std::size_t>(-1);

    ComparisonForm() = default;
    template <typename OfAscii, typename OfSequence>
    static ComparisonForm make(std::string_view text, OfAscii ofAscii, OfSequence ofSequence);
    void append(std::string_view sequence, std::size_t origin);

    std::string form;
    std::vector<std::size_t> origins; ///< of each byte of `form` and its end: where its sequence begins in
                                      ///< the text, or `insideSequence`
};

} // namespace fernhop::text
