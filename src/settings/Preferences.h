#pragma once

#include "platform/UserDefaults.h"
#include "rules/URLRule.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop {

/// The keys under which the settings are stored.
namespace settingsKey {
inline constexpr std::string_view appRules = "appRules";
inline constexpr std::string_view urlRules = "urlRules";
inline constexpr std::string_view routingFallbackBrowserID = "routingFallbackBrowserID";
inline constexpr std::string_view restoresDefaultBrowserOnQuit = "restoresDefaultBrowserOnQuit";
} // namespace settingsKey

/// Source application bundle identifier to browser bundle identifier.
using AppRules = std::map<std::string, std::string, std::less<>>;

/// The user's rules. Main thread only. Nothing is cached: each read goes to the settings, each change is
/// written at once. Unreadable values are empty. Each change returns whether it was stored; one that changes
/// nothing was not.
class Preferences {
  public:
    /// `defaults` must outlive this object.
    explicit Preferences(UserDefaults &defaults);

    /// The URL rules in stored order, as stored; empty when absent or undecodable.
    [[nodiscard]] std::vector<URLRule> urlRules() const;
    /// The first URL rule whose pattern `matches` accepts; nothing when there is none. Faster than reading
    /// all rules.
    [[nodiscard]] std::optional<URLRule>
    firstURLRule(const std::function<bool(std::string_view pattern)> &matches) const;
    /// The URL rule with this identifier; nothing when there is none.
    [[nodiscard]] std::optional<URLRule> urlRuleWithID(std::string_view id) const;

    /// Replaces all URL rules. If they cannot be encoded, the stored rules stay.
    bool setURLRules(const std::vector<URLRule> &rules);
    /// Removes every URL rule with this identifier. The others are written back in their order, even when
    /// none was removed.
    bool removeURLRule(std::string_view id);

    /// The app rules; empty when absent, not a dictionary, or when any value in it is not a string.
    [[nodiscard]] AppRules appRules() const;
    /// Replaces all app rules. False when that failed.
    bool setAppRules(const AppRules &rules);

    /// Adds or replaces the app rule of a source application.
    bool setBrowser(const std::string &browserBundleID, const std::string &forApp);
    /// Removes the app rule of a source application. The dictionary is written back in any case.
    bool removeRule(const std::string &forApp);

    /// Adds a rule at the end, or changes the browser of the first rule with the same pattern, letter case
    /// ignored. The pattern is trimmed; an empty one changes nothing. Returns the rule as stored; nothing
    /// when it was not stored.
    std::optional<URLRule> addURLRule(std::string_view pattern, const std::string &browserBundleID);
    /// Changes the rule with this identifier and keeps its position. An empty trimmed pattern, or an unknown
    /// identifier, changes nothing.
    bool updateURLRule(std::string_view id, std::string_view pattern, const std::string &browserBundleID);

    /// The underlying settings, for values that are read and written by key.
    [[nodiscard]] UserDefaults &userDefaults() const { return defaults; }

  private:
    bool changeURLRules(const std::function<bool(std::vector<URLRule> &rules)> &change);
    bool changeAppRules(const std::function<void(AppRules &rules)> &change);

    UserDefaults &defaults;
};

} // namespace fernhop
