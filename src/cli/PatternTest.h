#pragma once

#include "rules/URLRule.h"

#include <string>
#include <string_view>

namespace fernhop::cli {

/// Tests URLs against a pattern.
class PatternTest {
  public:
    explicit PatternTest(std::string pattern);

    /// "yes" or "no" and a newline: whether the pattern matches `url`. Text that is not a URL never matches.
    [[nodiscard]] std::string_view answerFor(std::string_view url);

    /// Whether all answers so far were "yes".
    [[nodiscard]] bool allMatched() const { return matchedAll; }

  private:
    URLRule rule;
    bool matchedAll = true;
};

} // namespace fernhop::cli
