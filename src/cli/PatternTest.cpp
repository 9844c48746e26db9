#include "cli/PatternTest.h"

#include <utility>

namespace fernhop::cli {

PatternTest::PatternTest(std::string pattern) : rule{"", std::move(pattern), ""} {}

std::string_view PatternTest::answerFor(std::string_view text) {
    const auto url = Url::parse(text);
    const bool matches = url && rule.matches(*url);
    matchedAll = matchedAll && matches;
    return matches ? "yes\n" : "no\n";
}

} // namespace fernhop::cli
