#include "settings/Preferences.h"

#include "platform/Text.h"
#include "rules/URLRuleCoding.h"

#include <algorithm>

namespace fernhop {

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

std::optional<URLRule> Preferences::urlRuleWithID(std::string_view id) const {
    const auto rules = urlRules();
    const auto found = std::ranges::find(rules, id, &URLRule::id);
    return found == rules.end() ? std::nullopt : std::optional(*found);
}

bool Preferences::setURLRules(const std::vector<URLRule> &rules) {
    auto json = encodeURLRules(rules);
    return json && defaults.setObject(PropertyValue{PropertyData{*std::move(json)}}, settingsKey::urlRules);
}

/// Changes the stored rules in one update, unless `change` says that there is nothing to store.
bool Preferences::changeURLRules(const std::function<bool(std::vector<URLRule> &)> &change) {
    bool isWritten = false;
    const bool isStored = defaults.update([&] {
        std::vector<URLRule> rules = urlRules();
        isWritten = change(rules) && setURLRules(rules);
    });
    return isWritten && isStored;
}

bool Preferences::removeURLRule(std::string_view id) {
    return changeURLRules([id](std::vector<URLRule> &rules) {
        std::erase_if(rules, [id](const URLRule &rule) { return rule.id == id; });
        return true;
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

bool Preferences::setAppRules(const AppRules &rules) {
    PropertyDictionary dictionary;
    for (const auto &[app, browser] : rules)
        dictionary.emplace(app, PropertyValue{browser});
    return defaults.setObject(PropertyValue{std::move(dictionary)}, settingsKey::appRules);
}

bool Preferences::changeAppRules(const std::function<void(AppRules &)> &change) {
    return defaults.update([&] {
        AppRules rules = appRules();
        change(rules);
        setAppRules(rules);
    });
}

bool Preferences::setBrowser(const std::string &browserBundleID, const std::string &forApp) {
    return changeAppRules([&](AppRules &rules) { rules.insert_or_assign(forApp, browserBundleID); });
}

bool Preferences::removeRule(const std::string &forApp) {
    return changeAppRules([&](AppRules &rules) { rules.erase(forApp); });
}

std::optional<URLRule> Preferences::addURLRule(std::string_view pattern, const std::string &browserBundleID) {
    const std::string_view trimmed = text::trimmed(pattern);
    if (trimmed.empty())
        return std::nullopt;
    URLRule added;
    const bool isStored = changeURLRules([&](std::vector<URLRule> &rules) {
        auto rule = std::ranges::find_if(rules, [trimmed](const URLRule &candidate) {
            return text::caseInsensitiveEqual(candidate.pattern, trimmed);
        });
        if (rule == rules.end())
            rule = rules.insert(rule, {text::makeUuid(), std::string(trimmed), {}});
        rule->browserBundleID = browserBundleID;
        added = *rule;
        return true;
    });
    return isStored ? std::optional(added) : std::nullopt;
}

bool Preferences::updateURLRule(std::string_view id, std::string_view pattern,
                                const std::string &browserBundleID) {
    const std::string_view trimmed = text::trimmed(pattern);
    return !trimmed.empty() && changeURLRules([&](std::vector<URLRule> &rules) {
        const auto rule = std::ranges::find(rules, id, &URLRule::id);
        if (rule == rules.end())
            return false;
        rule->pattern = trimmed;
        rule->browserBundleID = browserBundleID;
        return true;
    });
}

} // namespace fernhop
