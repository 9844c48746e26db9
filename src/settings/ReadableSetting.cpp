#include "settings/ReadableSetting.h"

#include "rules/URLRuleCoding.h"
#include "settings/Preferences.h"

#include <algorithm>
#include <cstdint>

namespace fernhop {

namespace {

bool isDictionaryOfStrings(const PropertyValue &stored) {
    const auto *dictionary = stored.as<PropertyDictionary>();
    return dictionary && std::all_of(dictionary->begin(), dictionary->end(), [](const auto &entry) {
               return entry.second.template as<std::string>() != nullptr;
           });
}

bool holdsURLRules(const PropertyValue &stored) {
    const auto *data = stored.as<PropertyData>();
    return data && decodeURLRules(data->bytes);
}

bool isScalar(const PropertyValue &stored) {
    return stored.as<std::string>() || stored.as<std::int64_t>() || stored.as<double>() || stored.as<bool>();
}

} // namespace

bool isReadableSetting(std::string_view key, const PropertyValue &stored) {
    if (key == settingsKey::appRules)
        return isDictionaryOfStrings(stored);
    if (key == settingsKey::urlRules)
        return holdsURLRules(stored);
    if (key == settingsKey::routingFallbackBrowserID || key == settingsKey::restoresDefaultBrowserOnQuit)
        return isScalar(stored);
    return true;
}

} // namespace fernhop
