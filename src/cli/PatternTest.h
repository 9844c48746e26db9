#pragma once

#include "rules/URLRule.h"

#include <string>
#include <string_view>

namespace fernhop::cli {

/// Tests URLs against the pattern of a rule that need not be stored.
class PatternTest {
  public:
    explicit PatternTest(std::string pattern);

    /// "yes" or "no" and a newline: whether the pattern matches `url`. What is no URL matches nothing.
    [[nodiscard]] std::string_view answerFor(std::string_view url);

    /// Whether every answer so far was "yes".
    [[nodiscard]] bool allMatched() const { return matchedAll; }

  private:
    URLRule rule;
    bool matchedAll = true;
};

} // namespace fernhop::cli
