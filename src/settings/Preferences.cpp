#include "settings/Preferences.h"

#include "platform/Text.h"
#include "rules/URLRuleCoding.h"

#include <algorithm>

namespace fernhop {

namespace {

PropertyValue asProperty(const AppRules &rules) {
    PropertyDictionary dictionary;
    for (const auto &[app, browser] : rules)
        dictionary.emplace(app, PropertyValue{browser});
    return {std::move(dictionary)};
}

} // namespace

Preferences::Preferences(UserDefaults &userDefaults) : defaults(userDefaults) {}

std::vector<URLRule> Preferences::urlRules() const {
    const auto json = defaults.dataForKey(settingsKey::urlRules);
    return json ? decodeURLRules(*json).value_or(std::vector<URLRule>()) : std::vector<URLRule>();
}

std::optional<URLRule> Preferences::firstURLRule(const std::function<bool(std::string_view)> &matches) const {
    const auto json = defaults.dataForKey(settingsKey::urlRules);
    std::optional<URLRule> first;
    const auto test = [&](const URLRuleView &rule) {
        if (matches(rule.pattern))
            first = {std::string(rule.id), std::string(rule.pattern), std::string(rule.browserBundleID)};
        return !first;
    };
    return json && visitURLRules(*json, test) ? first : std::nullopt;
}

void Preferences::setURLRules(const std::vector<URLRule> &rules) {
    if (auto json = encodeURLRules(rules))
        defaults.setObject(PropertyValue{PropertyData{*std::move(json)}}, settingsKey::urlRules);
}

void Preferences::removeURLRule(std::string_view id) {
    defaults.update([&] {
        std::vector<URLRule> rules = urlRules();
        std::erase_if(rules, [id](const URLRule &rule) { return rule.id == id; });
        setURLRules(rules);
    });
}

AppRules Preferences::appRules() const {
    const auto dictionary = defaults.dictionaryForKey(settingsKey::appRules);
    if (!dictionary)
        return {};
    AppRules rules;
    for (const auto &[app, value] : *dictionary) {
        const auto *browser = value.as<std::string>();
        if (!browser)
            return {};
        rules.emplace(app, *browser);
    }
    return rules;
}

void Preferences::setBrowser(const std::string &browserBundleID, const std::string &forApp) {
    defaults.update([&] {
        AppRules rules = appRules();
        rules.insert_or_assign(forApp, browserBundleID);
        defaults.setObject(asProperty(rules), settingsKey::appRules);
    });
}

void Preferences::removeRule(const std::string &forApp) {
    defaults.update([&] {
        AppRules rules = appRules();
        rules.erase(forApp);
        defaults.setObject(asProperty(rules), settingsKey::appRules);
    });
}

void Preferences::addURLRule(std::string_view pattern, const std::string &browserBundleID) {
    const std::string_view trimmed = text::trimmed(pattern);
    if (trimmed.empty())
        return;
    defaults.update([&] {
        std::vector<URLRule> rules = urlRules();
        const auto same = std::ranges::find_if(rules, [trimmed](const URLRule &rule) {
            return text::caseInsensitiveEqual(rule.pattern, trimmed);
        });
        if (same == rules.end())
            rules.push_back({text::makeUuid(), std::string(trimmed), browserBundleID});
        else
            same->browserBundleID = browserBundleID;
        setURLRules(rules);
    });
}

void Preferences::updateURLRule(std::string_view id, std::string_view pattern,
                                const std::string &browserBundleID) {
    const std::string_view trimmed = text::trimmed(pattern);
    if (trimmed.empty())
        return;
    defaults.update([&] {
        std::vector<URLRule> rules = urlRules();
        const auto rule = std::ranges::find(rules, id, &URLRule::id);
        if (rule == rules.end())
            return;
        rule->pattern = trimmed;
        rule->browserBundleID = browserBundleID;
        setURLRules(rules);
    });
}

} // namespace fernhop
