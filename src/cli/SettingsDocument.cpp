#include "cli/SettingsDocument.h"

#include "cli/Json.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <utility>

namespace fernhop::cli {

namespace {

constexpr int documentVersion = 1;

using ParsedJson = nlohmann::json; // looks members up quickly

/// A JSON parser that also detects repeated members, of which the library keeps only one.
class StrictParser {
  public:
    /// The value; a discarded one when the text is not JSON.
    ParsedJson parse(std::string_view text) {
        using Event = ParsedJson::parse_event_t;
        const auto notice = [this](int, Event event, ParsedJson &parsed) {
            if (event == Event::object_start)
                members.emplace_back();
            else if (event == Event::object_end)
                members.pop_back();
            else if (event == Event::key)
                repeats = !members.back().insert(parsed.get<std::string>()).second || repeats;
            return true;
        };
        return ParsedJson::parse(text, notice, false);
    }

    [[nodiscard]] bool sawRepeatedMember() const { return repeats; }

  private:
    std::vector<std::set<std::string>> members; // of the objects that are open
    bool repeats = false;
};

bool hasExactly(const ParsedJson &object, std::initializer_list<std::string_view> names) {
    return object.is_object() && object.size() == names.size() &&
           std::ranges::all_of(names, [&](std::string_view name) { return object.contains(name); });
}

bool isText(const ParsedJson &value) {
    return value.is_string() && value.get_ref<const std::string &>().find('\0') == std::string::npos;
}

bool isRule(const ParsedJson &value) {
    return hasExactly(value, {"id", "pattern", "browserBundleID"}) && std::ranges::all_of(value, isText);
}

bool isAppRule(const auto &member) {
    return member.key().find('\0') == std::string::npos && isText(member.value());
}

/// Why a document is invalid, for people; nothing when it is valid.
std::optional<std::string> faultOf(const ParsedJson &document) {
    if (!document.is_object() || !document.contains("version"))
        return "it is not an exported document";
    if (document["version"] != ParsedJson(documentVersion) || !document["version"].is_number_integer())
        return "its version is not 1";
    if (!hasExactly(document,
                    {"version", settingsKey::appRules, settingsKey::urlRules,
                     settingsKey::routingFallbackBrowserID, settingsKey::restoresDefaultBrowserOnQuit}))
        return "a member is missing or unknown";
    const ParsedJson &urlRules = document.at(std::string(settingsKey::urlRules));
    if (!urlRules.is_array() || !std::ranges::all_of(urlRules, isRule))
        return "its URL rules are malformed";
    const ParsedJson &appRules = document.at(std::string(settingsKey::appRules));
    const auto members = appRules.items();
    if (!appRules.is_object() ||
        !std::all_of(members.begin(), members.end(), [](const auto &member) { return isAppRule(member); }))
        return "its app rules are malformed";
    const ParsedJson &fallback = document.at(std::string(settingsKey::routingFallbackBrowserID));
    if (!fallback.is_null() && !isText(fallback))
        return "its fallback browser is neither a string nor null";
    if (!document.at(std::string(settingsKey::restoresDefaultBrowserOnQuit)).is_boolean())
        return "its restore option is neither true nor false";
    return std::nullopt;
}

SettingsDocument settingsIn(const ParsedJson &document) {
    SettingsDocument settings;
    for (const auto &rule : document.at(std::string(settingsKey::urlRules)))
        settings.urlRules.push_back({rule.at("id"), rule.at("pattern"), rule.at("browserBundleID")});
    for (const auto &[app, browser] : document.at(std::string(settingsKey::appRules)).items())
        settings.appRules.insert_or_assign(app, browser.get<std::string>());
    const ParsedJson &fallback = document.at(std::string(settingsKey::routingFallbackBrowserID));
    if (!fallback.is_null())
        settings.routingFallbackBrowserID = fallback.get<std::string>();
    settings.restoresDefaultBrowserOnQuit =
        document.at(std::string(settingsKey::restoresDefaultBrowserOnQuit)).get<bool>();
    return settings;
}

} // namespace

SettingsDocument storedSettings(const Preferences &preferences) {
    const UserDefaults &defaults = preferences.userDefaults();
    return {preferences.urlRules(), preferences.appRules(),
            defaults.stringForKey(settingsKey::routingFallbackBrowserID),
            defaults.boolForKey(settingsKey::restoresDefaultBrowserOnQuit)};
}

bool storeSettings(const SettingsDocument &document, Preferences &preferences) {
    UserDefaults &defaults = preferences.userDefaults();
    // Where nothing can be written, what is there already may still be imported.
    const bool isThereAlready = storedSettings(preferences) == document;
    bool isEncoded = false;
    const bool isStored = defaults.update([&] {
        isEncoded = preferences.setURLRules(document.urlRules);
        preferences.setAppRules(document.appRules);
        std::optional<PropertyValue> fallback;
        if (document.routingFallbackBrowserID)
            fallback = PropertyValue{*document.routingFallbackBrowserID};
        defaults.setObject(std::move(fallback), settingsKey::routingFallbackBrowserID);
        defaults.setBool(document.restoresDefaultBrowserOnQuit, settingsKey::restoresDefaultBrowserOnQuit);
    });
    return isThereAlready || (isEncoded && isStored);
}

std::string encodeSettings(const SettingsDocument &document) {
    Json urlRules = Json::array();
    for (const auto &rule : document.urlRules)
        urlRules.push_back(toJson(rule));
    Json appRules = Json::object();
    for (const auto &[app, browser] : document.appRules)
        appRules.get_ref<Json::object_t &>().emplace_back(app, browser); // the keys differ: no need to search
    Json json = {{"version", documentVersion}};
    json[std::string(settingsKey::urlRules)] = std::move(urlRules);
    json[std::string(settingsKey::appRules)] = std::move(appRules);
    json[std::string(settingsKey::routingFallbackBrowserID)] = toJson(document.routingFallbackBrowserID);
    json[std::string(settingsKey::restoresDefaultBrowserOnQuit)] = document.restoresDefaultBrowserOnQuit;
    return documentText(json);
}

std::variant<SettingsDocument, std::string> decodeSettings(std::string_view json) {
    StrictParser parser;
    const ParsedJson document = parser.parse(json);
    if (document.is_discarded())
        return "it is not JSON";
    if (parser.sawRepeatedMember())
        return "it contains a member twice";
    if (auto fault = faultOf(document))
        return *std::move(fault);
    return settingsIn(document);
}

} // namespace fernhop::cli
