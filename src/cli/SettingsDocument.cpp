#include "cli/SettingsDocument.h"

#include "cli/Json.h"
#include "cli/Results.h"

#include <simdjson.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <utility>

namespace fernhop::cli {

namespace {

namespace dom = simdjson::dom;

constexpr int documentVersion = 1;

/// Levels of arrays and objects that the parser follows; a document has three.
constexpr std::size_t deepestNesting = 16;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Whether `object` has these members, each once, and no other.
bool hasExactly(const dom::object &object, std::initializer_list<std::string_view> names) {
    return object.size() == names.size() && std::ranges::all_of(names, [&](std::string_view name) {
               return object.at_key(name).error() == simdjson::SUCCESS;
           });
}

bool holdsNoZero(std::string_view text) {
    return text.find('\0') == std::string_view::npos;
}

/// The text of a member that is there; nothing when it is of another type, or settings cannot store it.
std::optional<std::string> textIn(const dom::object &object, std::string_view name) {
    std::string_view text;
    const bool isText = object.at_key(name).get(text) == simdjson::SUCCESS && holdsNoZero(text);
    return isText ? std::optional<std::string>(text) : std::nullopt;
}

std::optional<URLRule> urlRuleIn(const dom::element &value) {
    dom::object object;
    if (value.get(object) || !hasExactly(object, {"id", "pattern", "browserBundleID"}))
        return std::nullopt;
    auto id = textIn(object, "id");
    auto pattern = textIn(object, "pattern");
    auto browser = textIn(object, "browserBundleID");
    if (!id || !pattern || !browser)
        return std::nullopt;
    return URLRule{*std::move(id), *std::move(pattern), *std::move(browser)};
}

std::optional<std::vector<URLRule>> urlRulesIn(const dom::element &value) {
    std::vector<URLRule> rules;
    dom::array array;
    if (value.get(array))
        return std::nullopt;
    for (const dom::element rule : array) {
        auto read = urlRuleIn(rule);
        if (!read)
            return std::nullopt;
        rules.push_back(*std::move(read));
    }
    return rules;
}

std::optional<AppRules> appRulesIn(const dom::element &value) {
    AppRules rules;
    dom::object object;
    if (value.get(object))
        return std::nullopt;
    for (const auto &[app, target] : object) {
        std::string_view browser;
        if (target.get(browser) || !holdsNoZero(app) || !holdsNoZero(browser) ||
            !rules.emplace(app, browser).second)
            return std::nullopt;
    }
    return rules;
}

/// The settings in a document, or a description of what is wrong with it.
std::variant<SettingsDocument, std::string> settingsIn(const dom::element &root) {
    dom::object document;
    if (root.get(document) || document.at_key("version").error())
        return "it is not an exported document";
    std::int64_t version = 0;
    if (document.at_key("version").get(version) || version != documentVersion)
        return "its version is not 1";
    if (!hasExactly(document,
                    {"version", settingsKey::appRules, settingsKey::urlRules,
                     settingsKey::routingFallbackBrowserID, settingsKey::restoresDefaultBrowserOnQuit}))
        return "a member is missing, unknown or repeated";
    SettingsDocument settings;
    auto urlRules = urlRulesIn(document.at_key(settingsKey::urlRules).value_unsafe());
    if (!urlRules)
        return "its URL rules are malformed";
    settings.urlRules = *std::move(urlRules);
    auto appRules = appRulesIn(document.at_key(settingsKey::appRules).value_unsafe());
    if (!appRules)
        return "its app rules are malformed, or an application is repeated";
    settings.appRules = *std::move(appRules);
    settings.routingFallbackBrowserID = textIn(document, settingsKey::routingFallbackBrowserID);
    const bool hasNoFallback = document.at_key(settingsKey::routingFallbackBrowserID).is_null();
    if (!settings.routingFallbackBrowserID && !hasNoFallback)
        return "its fallback browser is neither a string nor null";
    if (document.at_key(settingsKey::restoresDefaultBrowserOnQuit).get(settings.restoresDefaultBrowserOnQuit))
        return "its restore option is neither true nor false";
    return settings;
}

Json jsonOf(const SettingsDocument &document) {
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
    return json;
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
    return documentText(jsonOf(document));
}

std::string encodeForTransfer(const SettingsDocument &document) {
    return jsonOf(document).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::variant<SettingsDocument, std::string> decodeSettings(std::string_view json) {
    if (json.size() > largestSettingsDocument)
        return std::string(largerThanDocuments);
    if (json.starts_with(byteOrderMark))
        json.remove_prefix(byteOrderMark.size());
    dom::parser parser;
    dom::element root;
    auto error = parser.allocate(json.size(), deepestNesting);
    if (!error)
        error = parser.parse(json.data(), json.size()).get(root);
    if (error == simdjson::DEPTH_ERROR)
        return "it is nested too deeply";
    if (error)
        return "it is not JSON";
    return settingsIn(root);
}

CommandResult refusedDocument(std::string_view fault) {
    return failed("The document was refused and nothing was changed: " + std::string(fault) + ".");
}

} // namespace fernhop::cli
