// One rule test, side by side with what the C library offers for the same question over the same bytes.

#include "platform/Url.h"
#include "rules/URLRule.h"
#include "rules/UrlMatcher.h"

#include <benchmark/benchmark.h>
#include <fnmatch.h>

#include <clocale>
#include <cstring>
#include <string>

namespace {

using fernhop::Url;
using fernhop::UrlMatcher;
using fernhop::URLRule;

const std::string url =
    "https://docs.example/team/handbook/engineering/on-call?section=rotation&week=27#escalation-policy";

/// A pattern as a user writes it, and the same question as fnmatch and memmem take it.
struct Question {
    const char *rule;
    const char *fnmatchPattern;
    const char *memmemNeedle;
};

constexpr Question substringFound{"Section=Rotation", "*Section=Rotation*", "section=rotation"};
constexpr Question substringAbsent{"intranet.example", "*intranet.example*", "intranet.example"};
constexpr Question wildcardFound{"*/Handbook/*Policy", "*/Handbook/*Policy", "/handbook/"};
constexpr Question wildcardAbsent{"*intranet.example/*", "*intranet.example/*", "intranet.example/"};
constexpr Question wildcardAnchored{"https://intranet.example/*", "https://intranet.example/*",
                                    "https://intranet.example/"};

void preparedRule(benchmark::State &state, const Question &question) {
    const Url link = Url::parse(url).value();
    const UrlMatcher matcher(link);
    const std::string_view pattern = question.rule;
    for (auto _ : state)
        benchmark::DoNotOptimize(matcher.matches(pattern));
}

void singleRule(benchmark::State &state, const Question &question) {
    const Url link = Url::parse(url).value();
    const URLRule rule{"id", question.rule, "browser"};
    for (auto _ : state)
        benchmark::DoNotOptimize(rule.matches(link));
}

void fnmatchRival(benchmark::State &state, const Question &question, const char *locale) {
    std::setlocale(LC_ALL, locale);
    for (auto _ : state)
        benchmark::DoNotOptimize(fnmatch(question.fnmatchPattern, url.c_str(), FNM_CASEFOLD));
    std::setlocale(LC_ALL, "C");
}

/// As in every desktop session.
void fnmatchInUtf8(benchmark::State &state, const Question &question) {
    fnmatchRival(state, question, "C.UTF-8");
}

/// With bytes for characters, as in a program that never set its locale.
void fnmatchInC(benchmark::State &state, const Question &question) {
    fnmatchRival(state, question, "C");
}

void memmemRival(benchmark::State &state, const Question &question) {
    const std::string needle = question.memmemNeedle;
    for (auto _ : state)
        benchmark::DoNotOptimize(memmem(url.data(), url.size(), needle.data(), needle.size()));
}

} // namespace

int main(int argc, char **argv) {
    struct Named {
        const char *name;
        Question question;
    };
    for (const auto &[name, question] :
         {Named{"substring found", substringFound}, Named{"substring absent", substringAbsent},
          Named{"wildcard found", wildcardFound}, Named{"wildcard absent", wildcardAbsent},
          Named{"wildcard anchored", wildcardAnchored}}) {
        const auto add = [&](const char *who, auto operation) {
            benchmark::RegisterBenchmark((std::string(name) + "/" + who).c_str(), operation, question);
        };
        add("rule, URL prepared", preparedRule);
        add("rule, URL as it came", singleRule);
        add("fnmatch, UTF-8", fnmatchInUtf8);
        add("fnmatch, C", fnmatchInC);
        add("memmem", memmemRival);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
