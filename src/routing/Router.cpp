#include "routing/Router.h"

#include "catalog/OwnBundleID.h"
#include "rules/UrlMatcher.h"

#include <algorithm>
#include <utility>

namespace fernhop {

namespace {

std::optional<URLRule> firstMatchingRule(const Preferences &preferences, const Url &url) {
    const UrlMatcher matcher(url);
    return preferences.firstURLRule(
        [&matcher](std::string_view pattern) { return matcher.matches(pattern); });
}

std::optional<std::string> ruleForApp(const AppRules &rules, const std::string &app) {
    const auto found = rules.find(app);
    return found == rules.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

RoutingDecision Router::decide(const Url &url, const std::optional<std::string> &source) const {
    RoutingDecision decision(url, source);
    decision.urlRule = firstMatchingRule(sources.preferences, url);
    if (source)
        decision.appRule = ruleForApp(sources.preferences.appRules(), *source);
    decision.fallback =
        sources.preferences.userDefaults().stringForKey(settingsKey::routingFallbackBrowserID);

    Choice choice = decision.urlRule ? choose(decision.urlRule->browserBundleID, RoutingReason::urlRule)
                                     : choose(decision.appRule, RoutingReason::appRule);
    if (decision.urlRule && decision.appRule && choice.because != RoutingReason::urlRule)
        choice.passedOver.insert(choice.passedOver.begin() + 1,
                                 {RoutingReason::appRule, *decision.appRule, PassedOver::Cause::outranked});
    decision.target = std::move(choice.target);
    decision.because = choice.because;
    decision.passedOver = std::move(choice.passedOver);
    return decision;
}

std::optional<Browser> Router::resolvedTargetBrowser(const std::optional<std::string> &ruleBrowserID) const {
    return choose(ruleBrowserID, RoutingReason::urlRule).target;
}

std::optional<Browser> Router::browserForRouting(const std::string &bundleID) const {
    const auto &installed = sources.installedBrowsers;
    if (const auto found = std::ranges::find(installed, bundleID, &Browser::bundleID);
        found != installed.end())
        return *found;
    if (auto browser = sources.catalog.browser(bundleID))
        return browser;
    if (const auto url = sources.workspace.urlForApplicationWithBundleIdentifier(bundleID))
        return Browser{sources.files.displayNameAtPath(url->path()), bundleID, *url};
    return std::nullopt;
}

std::optional<std::string> Router::validFallbackBrowserID() const {
    Choice choice;
    tryFallback(choice);
    return choice.target ? std::optional(choice.target->bundleID) : std::nullopt;
}

Router::Choice Router::choose(const std::optional<std::string> &ruleBrowserID, RoutingReason rule) const {
    Choice choice;
    if (!ruleBrowserID || !tryCandidate(*ruleBrowserID, rule, choice))
        tryFallback(choice);
    return choice;
}

bool Router::tryCandidate(const std::string &bundleID, RoutingReason candidate, Choice &choice) const {
    if (bundleID == ownBundleID(sources.bundles)) {
        choice.passedOver.push_back({candidate, bundleID, PassedOver::Cause::isFernhop});
        return false;
    }
    choice.target = browserForRouting(bundleID);
    if (!choice.target) {
        choice.passedOver.push_back({candidate, bundleID, PassedOver::Cause::notInstalled});
        return false;
    }
    choice.because = candidate;
    return true;
}

void Router::tryFallback(Choice &choice) const {
    const auto stored =
        sources.preferences.userDefaults().stringForKey(settingsKey::routingFallbackBrowserID);
    if (stored && tryCandidate(*stored, RoutingReason::fallback, choice))
        return;
    for (const Browser &browser : sources.installedBrowsers)
        if (tryCandidate(browser.bundleID, RoutingReason::firstBrowser, choice))
            return;
}

} // namespace fernhop
