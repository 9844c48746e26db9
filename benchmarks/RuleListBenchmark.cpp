// What one link costs with a list of rules that its last rule matches: each rule is tested as it is read from
// the JSON text, which is in memory already. Beside it, what the list costs where it is kept.

#include "platform/Url.h"
#include "rules/URLRuleCoding.h"
#include "rules/UrlMatcher.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using fernhop::Url;
using fernhop::UrlMatcher;
using fernhop::URLRule;

std::vector<URLRule> rules(int count) {
    std::vector<URLRule> result;
    for (int number = 0; number < count; ++number) {
        const std::string host = "host" + std::to_string(number) + ".example";
        result.push_back({"0B1D5A3C-7C1E-4E7A-9B0A-" + std::to_string(100000000000 + number),
                          number % 2 ? "https://" + host + "/*" : host, "org.mozilla.firefox"});
    }
    result.back().pattern = "docs.example";
    return result;
}

const Url link =
    Url::parse("https://docs.example/team/handbook/engineering/on-call?section=rotation&week=27").value();

bool anyMatches(const std::vector<URLRule> &list) {
    const UrlMatcher matcher(link);
    return std::ranges::any_of(list,
                               [&matcher](const URLRule &rule) { return matcher.matches(rule.pattern); });
}

bool anyMatches(std::string_view json) {
    const UrlMatcher matcher(link);
    bool found = false;
    const auto test = [&](const fernhop::URLRuleView &rule) {
        found = matcher.matches(rule.pattern);
        return !found;
    };
    return fernhop::visitURLRules(json, test) && found;
}

void visitAndMatch(benchmark::State &state) {
    const std::string json = fernhop::encodeURLRules(rules(static_cast<int>(state.range(0)))).value();
    for (auto _ : state)
        benchmark::DoNotOptimize(anyMatches(json));
    state.SetComplexityN(state.range(0));
}

void decodeOnly(benchmark::State &state) {
    const std::string json = fernhop::encodeURLRules(rules(static_cast<int>(state.range(0)))).value();
    for (auto _ : state)
        benchmark::DoNotOptimize(fernhop::decodeURLRules(json));
}

void matchOnly(benchmark::State &state) {
    const std::vector<URLRule> list = rules(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(anyMatches(list));
}

void matchOnlyBeyondAscii(benchmark::State &state) {
    std::vector<URLRule> list = rules(static_cast<int>(state.range(0)));
    for (URLRule &rule : list)
        rule.pattern.replace(rule.pattern.find('.'), 1, "\u00fc.");
    for (auto _ : state)
        benchmark::DoNotOptimize(anyMatches(list));
}

BENCHMARK(visitAndMatch)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000)->Complexity(benchmark::oN);
BENCHMARK(decodeOnly)->Arg(10)->Arg(10000);
BENCHMARK(matchOnly)->Arg(10)->Arg(10000);
BENCHMARK(matchOnlyBeyondAscii)->Arg(10)->Arg(10000);

} // namespace

BENCHMARK_MAIN();
