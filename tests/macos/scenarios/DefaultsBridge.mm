#include "macos/scenarios/DefaultsBridge.h"

#include "platform/macos/Conversions.h"

namespace fernhop::macos {

const StandardDefaults &DefaultsBridge::filled() const {
    @autoreleasepool {
        NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
        for (const char *key :
             {"appRules", "urlRules", "routingFallbackBrowserID", "restoresDefaultBrowserOnQuit"}) {
            const auto found = memory.stored.find(std::string_view(key));
            if (found == memory.stored.end())
                [defaults removeObjectForKey:toNSString(key)];
            else
                [defaults setObject:toPropertyList(found->second) forKey:toNSString(key)];
        }
    }
    return system;
}

void DefaultsBridge::readBack(std::string_view key) {
    @autoreleasepool {
        id value = [[NSUserDefaults standardUserDefaults] objectForKey:toNSString(key)];
        memory.setObject(fromPropertyList(value), key);
    }
}

std::optional<PropertyDictionary> DefaultsBridge::dictionaryForKey(std::string_view key) const {
    return filled().dictionaryForKey(key);
}

std::optional<std::string> DefaultsBridge::dataForKey(std::string_view key) const {
    return filled().dataForKey(key);
}

std::optional<std::string> DefaultsBridge::stringForKey(std::string_view key) const {
    return filled().stringForKey(key);
}

bool DefaultsBridge::boolForKey(std::string_view key) const {
    return filled().boolForKey(key);
}

bool DefaultsBridge::setObject(std::optional<PropertyValue> value, std::string_view key) {
    (void)filled();
    const bool isStored = system.setObject(std::move(value), key);
    readBack(key);
    return isStored;
}

bool DefaultsBridge::setBool(bool value, std::string_view key) {
    (void)filled();
    const bool isStored = system.setBool(value, key);
    readBack(key);
    return isStored;
}

bool DefaultsBridge::update(const std::function<void()> &change) {
    return memory.update([&] { (void)system.update(change); });
}

} // namespace fernhop::macos
