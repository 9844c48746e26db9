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

/// The keys of the settings, which are also their persistent form.
namespace settingsKey {
inline constexpr std::string_view appRules = "appRules";
inline constexpr std::string_view urlRules = "urlRules";
inline constexpr std::string_view routingFallbackBrowserID = "routingFallbackBrowserID";
inline constexpr std::string_view restoresDefaultBrowserOnQuit = "restoresDefaultBrowserOnQuit";
} // namespace settingsKey

/// Source application bundle identifier to browser bundle identifier.
using AppRules = std::map<std::string, std::string, std::less<>>;

/// The store of the user's choices. Main thread only. Nothing is cached: each read goes to the settings, each
/// change is written at once. No operation fails visibly: what cannot be read is empty, what cannot be
/// written is dropped. Each change says whether it is stored now; one that changes nothing is not.
class Preferences {
  public:
    /// `defaults` must outlive this object.
    explicit Preferences(UserDefaults &defaults);

    /// The URL rules in stored order, as stored; empty when absent or undecodable.
    [[nodiscard]] std::vector<URLRule> urlRules() const;
    /// The first of them whose pattern `matches` accepts; nothing when none does. Faster than reading them
    /// all.
    [[nodiscard]] std::optional<URLRule>
    firstURLRule(const std::function<bool(std::string_view pattern)> &matches) const;
    /// The URL rule with this identifier; nothing when there is none.
    [[nodiscard]] std::optional<URLRule> urlRuleWithID(std::string_view id) const;

    /// Replaces all URL rules. Rules that cannot be encoded leave the stored ones as they are.
    bool setURLRules(const std::vector<URLRule> &rules);
    /// Removes every URL rule with this identifier and stores the others in their order, also when there is
    /// none.
    bool removeURLRule(std::string_view id);

    /// The app rules; empty when absent, not a dictionary, or when any value in it is no string.
    [[nodiscard]] AppRules appRules() const;
    /// Replaces all app rules. False when that failed.
    bool setAppRules(const AppRules &rules);

    /// Adds or replaces the app rule of a source application.
    bool setBrowser(const std::string &browserBundleID, const std::string &forApp);
    /// Removes the app rule of a source application; the dictionary is written back in any case.
    bool removeRule(const std::string &forApp);

    /// Adds a rule at the end, or gives the first rule with the same pattern, letter case ignored, a new
    /// browser. The pattern is trimmed; an empty one changes nothing. The rule as it is stored; nothing when
    /// it is not.
    std::optional<URLRule> addURLRule(std::string_view pattern, const std::string &browserBundleID);
    /// Changes the rule with this identifier in its place. An empty trimmed pattern, or no such rule, changes
    /// nothing.
    bool updateURLRule(std::string_view id, std::string_view pattern, const std::string &browserBundleID);

    /// The settings themselves, for the single values that are read and written by key.
    [[nodiscard]] UserDefaults &userDefaults() const { return defaults; }

  private:
    bool changeURLRules(const std::function<bool(std::vector<URLRule> &rules)> &change);
    bool changeAppRules(const std::function<void(AppRules &rules)> &change);

    UserDefaults &defaults;
};

} // namespace fernhop
